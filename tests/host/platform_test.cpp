#include <transspace/zorb/platform.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

// The settings are process-wide: every test starts and ends with the host's defaults.
class HostPlatform : public ::testing::Test {
protected:
  void SetUp() override { zorb::ResetPlatformSettings(); }
  void TearDown() override { zorb::ResetPlatformSettings(); }
};

std::string iso(double time, int dateStyle = 2, bool withTime = true, bool withSeconds = true) {
  std::string out = "stale";
  ToISODateTime(out, time, dateStyle, withTime, withSeconds);
  return out;
}

int serverLocales(std::string locale, std::vector<std::string>& list) { return GetServerLocaleList(locale, list); }

TEST_F(HostPlatform, EpochIsMidnightOfNewYear1970) { EXPECT_EQ(iso(0), "1970-01-01T00:00:00"); }

TEST_F(HostPlatform, DateIn2026) {
  EXPECT_EQ(iso(1795241020), "2026-11-21T06:03:40");
  EXPECT_EQ(iso(1767225600), "2026-01-01T00:00:00");
  EXPECT_EQ(iso(1772323199), "2026-02-28T23:59:59");
}

TEST_F(HostPlatform, LeapDays) {
  EXPECT_EQ(iso(951782400), "2000-02-29T00:00:00");
  EXPECT_EQ(iso(1709164800), "2024-02-29T00:00:00");
}

TEST_F(HostPlatform, NegativeTimesCountBackFromTheEpoch) {
  EXPECT_EQ(iso(-1), "1969-12-31T23:59:59");
  EXPECT_EQ(iso(-86400), "1969-12-31T00:00:00");
  EXPECT_EQ(iso(-86401), "1969-12-30T23:59:59");
  // The calendar is the proleptic Gregorian one all the way back (here to the day system files count dates from).
  EXPECT_EQ(iso(-12219379200.0), "1582-10-14T00:00:00");
}

TEST_F(HostPlatform, FractionalSecondsAreCutTowardsTheEarlierSecond) {
  EXPECT_EQ(iso(0.999), "1970-01-01T00:00:00");
  EXPECT_EQ(iso(-0.5), "1969-12-31T23:59:59");
}

TEST_F(HostPlatform, YearsOneToNineThousandNineHundredNinetyNine) {
  EXPECT_EQ(iso(-62135596800.0), "0001-01-01T00:00:00");
  EXPECT_EQ(iso(253402300799.0), "9999-12-31T23:59:59");
  EXPECT_EQ(iso(-62135596801.0), "");
  EXPECT_EQ(iso(253402300800.0), "");
}

TEST_F(HostPlatform, NonFiniteTimesGiveTheEmptyText) {
  EXPECT_EQ(iso(std::numeric_limits<double>::quiet_NaN()), "");
  EXPECT_EQ(iso(std::numeric_limits<double>::infinity()), "");
  EXPECT_EQ(iso(-std::numeric_limits<double>::infinity()), "");
}

TEST_F(HostPlatform, BasicFormAndShorterForms) {
  EXPECT_EQ(iso(1795241020, 1, true, true), "20261121T060340");
  EXPECT_EQ(iso(1795241020, 2, true, false), "2026-11-21T06:03");
  EXPECT_EQ(iso(1795241020, 2, false, true), "2026-11-21");
  EXPECT_EQ(iso(1795241020, 0, false, false), "20261121");
}

TEST_F(HostPlatform, DefaultServerLocaleIsLanguageAndTerritory) {
  std::vector<std::string> list{"stale"};
  EXPECT_EQ(serverLocales("de_DE.UTF-8", list), 1);
  EXPECT_EQ(list, std::vector<std::string>{"de_DE"});
  EXPECT_EQ(serverLocales("en_US", list), 1);
  EXPECT_EQ(list, std::vector<std::string>{"en_US"});
  EXPECT_EQ(serverLocales("sr_RS@latin", list), 1);
  EXPECT_EQ(list, std::vector<std::string>{"sr_RS"});
}

TEST_F(HostPlatform, DefaultResolverKnowsNoOtherNames) {
  for (char const* name : {"C", "POSIX", "C.UTF-8", "", "de", "_DE", "de_", ".UTF-8"}) {
    std::vector<std::string> list{"stale"};
    EXPECT_EQ(serverLocales(name, list), 0) << name;
    EXPECT_TRUE(list.empty()) << name;
  }
}

TEST_F(HostPlatform, DefaultResolverLeavesTheLocaleNameAlone) {
  std::string locale = "de_DE.UTF-8";
  std::vector<std::string> list;
  GetServerLocaleList(locale, list);
  EXPECT_EQ(locale, "de_DE.UTF-8");
}

TEST_F(HostPlatform, InstalledResolverIsUsedAndMayRewriteTheLocale) {
  zorb::SetServerLocaleResolver([](std::string& locale, std::vector<std::string>& list) {
    locale = "rewritten";
    list = {"x_Y", "z_W"};
    return 2;
  });
  std::string locale = "C";
  std::vector<std::string> list;
  EXPECT_EQ(GetServerLocaleList(locale, list), 2);
  EXPECT_EQ(locale, "rewritten");
  EXPECT_EQ(list, (std::vector<std::string>{"x_Y", "z_W"}));
}

TEST_F(HostPlatform, EmptyResolverRestoresTheDefault) {
  zorb::SetServerLocaleResolver([](std::string&, std::vector<std::string>&) { return -1; });
  std::vector<std::string> list;
  EXPECT_EQ(serverLocales("de_DE", list), -1);
  zorb::SetServerLocaleResolver(nullptr);
  EXPECT_EQ(serverLocales("de_DE", list), 1);
}

TEST_F(HostPlatform, DefaultsAreUtf8ModeAndUtf8CodePage) {
  EXPECT_NE(qUTF8mode(), 0);
  EXPECT_EQ(ZORBMBDefaultCodePage(), "UTF-8");
}

TEST_F(HostPlatform, SettersChangeModeAndCodePage) {
  zorb::SetUTF8Mode(false);
  EXPECT_EQ(qUTF8mode(), 0);
  zorb::SetUTF8Mode(true);
  EXPECT_EQ(qUTF8mode(), 1);
  zorb::SetDefaultCodePage("windows-1252");
  EXPECT_EQ(ZORBMBDefaultCodePage(), "windows-1252");
}

TEST_F(HostPlatform, ResetRestoresEverySetting) {
  zorb::SetUTF8Mode(false);
  zorb::SetDefaultCodePage("ISO-8859-15");
  zorb::SetServerLocaleResolver([](std::string&, std::vector<std::string>&) { return 7; });
  zorb::ResetPlatformSettings();
  EXPECT_EQ(qUTF8mode(), 1);
  EXPECT_EQ(ZORBMBDefaultCodePage(), "UTF-8");
  std::vector<std::string> list;
  EXPECT_EQ(serverLocales("C", list), 0);
}

}  // namespace
