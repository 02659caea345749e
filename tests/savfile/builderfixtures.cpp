#include "builderfixtures.h"

#include <cfloat>
#include <cmath>
#include <cstdint>

#include "savfilebuilder.h"

namespace savfiletest {

namespace {

using namespace std::string_literals;
using F = SavFileBuilder;

std::string const fixtureDir = "tests/data/sav/builder-made/";
std::string const seedDir = "fuzz/corpus/savfile/";

constexpr std::int32_t numberFormat(int width, int decimals) { return (5 << 16) | (width << 8) | decimals; }

// LOWEST as writers store it in the float constants and in ranges.
std::string lowest(F const& b) { return b.i64(static_cast<std::int64_t>(0xffeffffffffffffeull)); }

// A builder whose header has the given date, time and case count.
F startFile(char const* date, char const* time, std::int32_t cases, bool bigEndian = false) {
  F b(bigEndian);
  b.date = date;
  b.time = time;
  b.caseCount = cases;
  return b;
}

void machineInfo(F& b, int release, int characterCode) {
  b.integers(3, {release, 0, 0, 720, 1, 1, b.bigEndian() ? 1 : 2, characterCode});
}

void floatInfo(F& b) { b.extension(4, 8, 3, b.f64(-DBL_MAX) + b.f64(DBL_MAX) + lowest(b)); }

void caseCount64(F& b, std::int64_t count) { b.extension(16, 8, 2, b.i64(1) + b.i64(count)); }

// One (measure, width, alignment) triple per variable record that is not a continuation.
void displayParameters(F& b, std::vector<std::int32_t> const& triples) { b.integers(11, triples); }

std::vector<std::int32_t> repeated(std::vector<std::int32_t> const& triple, int times) {
  std::vector<std::int32_t> all;
  for (int i = 0; i < times; ++i) all.insert(all.end(), triple.begin(), triple.end());
  return all;
}

// Segment names as an old writer forms them: the first segment keeps the name, later ones take
// its first five bytes and a counter.
std::vector<std::string> segmentNames(std::string const& name, std::string const& prefix, int segments,
                                      int counterDigits) {
  std::vector<std::string> names{name};
  for (int k = 1; k < segments; ++k) {
    std::string counter = std::to_string(k);
    names.push_back(prefix + std::string(static_cast<std::size_t>(counterDigits) - counter.size(), '0') + counter);
  }
  return names;
}

// A long-string value label entry (subtype 21) of one variable.
std::string longStringLabels(F const& b, std::string const& variable, int width,
                             std::vector<std::pair<std::string, std::string>> const& labels) {
  std::string entry = b.i32(static_cast<std::int32_t>(variable.size())) + variable + b.i32(width) +
                      b.i32(static_cast<std::int32_t>(labels.size()));
  for (auto const& l : labels) {
    entry += b.i32(width) + F::padded(l.first, static_cast<std::size_t>(width)) +
             b.i32(static_cast<std::int32_t>(l.second.size())) + l.second;
  }
  return entry;
}

// An old Unix writer: big-endian, only subtypes 3 and 4, the month of the date in upper case.
F bigEndian() {
  F b = startFile("14 MAR 03", "09:15:00", 50, true);
  b.numeric("PLOT", nullptr, 0, {}, numberFormat(5, 0));
  b.numeric("SOIL", nullptr, 0, {}, numberFormat(2, 0));
  b.numeric("TREATED", nullptr, 0, {}, numberFormat(2, 0));
  for (char const* name : {"DEPTH", "YIELD1", "YIELD2"}) b.numeric(name, nullptr, 0, {}, numberFormat(3, 0));
  b.valueLabels({{b.f64(1), "CLAY"}, {b.f64(2), "SAND"}}, {2});
  b.valueLabels({{b.f64(0), "Untreated"}, {b.f64(1), "Fertilised"}}, {3});
  b.integers(3, {6, 1, 4, 671, 1, 1, 1, 2});
  floatInfo(b);
  return b;
}

// An old Windows writer (release 6): subtypes 3 and 4 only, a file label that starts with blanks.
F onlySubtypes3And4() {
  F b = startFile("30 Apr 96", "15:55:19", 240);
  b.fileLabel = "                       Bird count";
  std::string const id = "SITE NUMBER", kind = "KIND OF SITE", hour = "HOUR OF COUNT",
                    wind = "WIND SPEED -- TO NEAREST 0.1 M/S", day = "DAY OF COUNT", rain = "RAIN DURING COUNT";
  b.numeric("SITEID", &id, 0, {}, numberFormat(4, 0));
  b.numeric("SITEKIND", &kind, 0, {}, numberFormat(1, 0));
  b.numeric("HOUR", &hour, 0, {}, numberFormat(2, 0));
  b.numeric("WIND", &wind, 0, {}, numberFormat(5, 1));
  b.numeric("DAYOFWK", &day, 1, {9}, numberFormat(1, 0));
  b.string("RAIN", 1, &rain);
  b.valueLabels({{b.f64(1), "WOODLAND"}, {b.f64(2), "OPEN  FIELD"}, {b.f64(3), "WETLAND"}}, {2});
  b.valueLabels({{b.f64(1), "SUNDAY"}, {b.f64(2), "MONDAY"}, {b.f64(9), "UNKNOWN"}}, {5});
  b.valueLabels({{"Y", "YES"}, {"N", "NO"}}, {6});
  b.integers(3, {6, 1, 0, 720, 1, 1, 2, 2});
  floatInfo(b);
  return b;
}

// Release 11: variable sets whose lines end in CRLF, members named by their short names; no long
// names; missing values with value labels of their own.
F variableSetsCrlf() {
  F b = startFile("26 Aug 02", "14:52:34", 474);
  b.fileLabel = "v5.0";
  std::string const id = "Order number", region = "Region", shipped = "Shipping date", quantity = "Quantity",
                    category = "Category", price = "Price", cost = "Cost", rush = "Rush order";
  b.numeric("ORDERNO", &id, 0, {}, numberFormat(4, 0));
  b.string("REGION", 1, &region);
  b.numeric("SHIPPED", &shipped, 0, {}, F::format(23, 10, 0));
  b.numeric("QUANTITY", &quantity, 1, {0}, numberFormat(2, 0));
  b.numeric("CATEGORY", &category, 1, {0}, numberFormat(1, 0));
  b.numeric("PRICE", &price, 1, {0}, F::format(4, 8, 0));
  b.numeric("COST", &cost, 1, {0}, F::format(4, 8, 0));
  b.numeric("RUSH", &rush, 1, {9}, numberFormat(1, 0));
  b.valueLabels({{"n", "North"}, {"s", "South"}}, {2});
  b.valueLabels({{b.f64(0), "0 (Missing)"}, {b.f64(6), "6"}, {b.f64(12), "12"}}, {4});
  b.valueLabels({{b.f64(0), "0 (Missing)"}, {b.f64(1), "Books"}, {b.f64(2), "Music"}, {b.f64(3), "Tools"}}, {5});
  b.valueLabels({{b.f64(0), "missing"}}, {6, 7});
  b.valueLabels({{b.f64(0), "No"}, {b.f64(1), "Yes"}, {b.f64(9), "9 (Missing)"}}, {8});
  b.integers(3, {11, 1, 0, 720, 1, 1, 2, 2});
  floatInfo(b);
  b.text(5, "CUSTOMER= region rush quantity\r\nMONEY= cost price\r\n");
  displayParameters(b, {3, 8, 1, 1, 1, 0, 3, 13, 1, 2, 8, 1, 2, 8, 1, 3, 8, 1, 3, 8, 1, 2, 8, 1});
  return b;
}

// Release 12: long names, while the variable sets still name their members by upper-case short names.
F variableSetsShortNames() {
  F b = startFile("19 Oct 04", "21:59:19", 271);
  std::string const commute = "minutes of commute", income = "income bracket", car = "owns a car",
                    bike = "cycles to work", satisfaction = "satisfaction with transport";
  b.numeric("ID");
  b.numeric("HOUSEHLD", nullptr, 0, {}, numberFormat(8, 0));
  b.numeric("AGE", nullptr, 0, {}, numberFormat(8, 0));
  b.numeric("COMMUTEM", &commute, 0, {}, numberFormat(8, 0));
  b.numeric("INCOMEBR", &income, 0, {}, numberFormat(8, 0));
  b.numeric("CAROWNER", &car, 0, {}, numberFormat(8, 0));
  b.numeric("BIKEUSER", &bike, 0, {}, numberFormat(8, 0));
  b.numeric("SATISFAC", &satisfaction, 0, {}, numberFormat(8, 0));
  b.valueLabels({{b.f64(1), "single"}, {b.f64(2), "family"}}, {2});
  b.valueLabels({{b.f64(1), "lowest"}, {b.f64(10), "highest"}}, {5});
  b.valueLabels({{b.f64(1), "yes"}, {b.f64(2), "no"}}, {6, 7});
  b.integers(3, {12, 0, 0, 720, 1, 1, 2, 2});
  floatInfo(b);
  b.text(5, "TRAVEL= ID AGE COMMUTEM SATISFAC\nMEANS= AGE CAROWNER BIKEUSER INCOMEBR\n");
  displayParameters(b, repeated({3, 8, 1}, 8));
  b.text(13, "ID=id\tHOUSEHLD=household\tAGE=age\tCOMMUTEM=commuteMinutes\tINCOMEBR=incomeBracket\t"
             "CAROWNER=carOwner\tBIKEUSER=bikeUser\tSATISFAC=satisfaction");
  return b;
}

// Release 13: uncompressed; very long strings whose lengths are zero-padded to five digits; a
// nominal case size that is wrong (the variables take 320 eight-byte units, the header says 316);
// the last segment of a 258-byte string rounded up to 8.
F release13VeryLongStrings() {
  F b = startFile("08 Mar 06", "10:29:54", 2);
  b.compression = 0;
  b.nominalCaseSize = 316;
  b.numeric("N");
  b.string("A255", 255);
  b.veryLongString(segmentNames("A258", "A258", 2, 3), 8);
  b.veryLongString(segmentNames("A2000", "A2000", F::segmentCount(2000), 3), F::lastSegmentWidth(2000));
  b.integers(3, {13, 0, 0, 720, 1, 1, 2, 2});
  floatInfo(b);
  std::vector<std::int32_t> params{3, 10, 1};
  auto strings = repeated({1, 32, 0}, 1 + 2 + F::segmentCount(2000));
  params.insert(params.end(), strings.begin(), strings.end());
  displayParameters(b, params);
  b.text(13, "N=N\tA255=A255\tA258=A258\tA2000=A2000");
  b.text(14, "A258=00258\0\tA2000=02000\0"s);
  return b;
}

// Release 14: lengths of very long strings without padding, each entry closed by NUL and tab; the
// 64-bit case count; a label repeated on every segment, as some writers do.
F release14VeryLongStrings() {
  F b = startFile("10 Feb 06", "13:41:57", 1);
  std::string const comment = "Comment";
  b.string("VL255", 255);
  b.veryLongString(segmentNames("VL256", "VL256", 2, 3), F::lastSegmentWidth(256));
  b.veryLongString(segmentNames("VL1335", "VL133", F::segmentCount(1335), 3), F::lastSegmentWidth(1335), &comment);
  b.veryLongString(segmentNames("VL2000", "VL200", F::segmentCount(2000), 3), F::lastSegmentWidth(2000));
  b.string("CODE", 4);
  b.integers(3, {14, 0, 0, 720, 1, 1, 2, 2});
  floatInfo(b);
  int segments = 1 + 2 + F::segmentCount(1335) + F::segmentCount(2000);
  auto params = repeated({1, 26, 0}, segments);
  params.insert(params.end(), {1, 4, 0});
  displayParameters(b, params);
  b.text(13, "VL255=vl255\tVL256=vl256\tVL1335=vl1335\tVL2000=vl2000\tCODE=code");
  b.text(14, "VL256=256\0\tVL1335=1335\0\tVL2000=2000\0\t"s);
  caseCount64(b, 1);
  return b;
}

// The widest string there is: 32767 bytes in 131 segments, whose short names hold UTF-8 bytes.
F maxString() {
  F b = startFile("28 Feb 21", "00:09:14", 2);
  std::string const prefix = "A\xF0\x9F\xA4\x93";  // 'A' and a four-byte emoji: five bytes
  int const segments = F::segmentCount(32767);
  std::vector<std::string> names{prefix};
  std::string const digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  for (int k = 1; k < segments; ++k) {
    int n = k - 1;
    names.push_back(prefix + (n < 36 ? std::string(1, digits[n]) : std::string{digits[n / 36], digits[n % 36]}));
  }
  b.veryLongString(names, F::lastSegmentWidth(32767));
  b.numeric("B", nullptr, 0, {}, numberFormat(9, 0));
  machineInfo(b, 25, 65001);
  floatInfo(b);
  displayParameters(b, repeated({1, 8, 0}, segments + 1));
  b.text(13, prefix + "=a\xF0\x9F\xA4\x93\xF0\x9F\xA4\x93\tB=b");
  b.text(14, prefix + "=32767\0\t"s);
  caseCount64(b, 2);
  b.text(18, "a\xF0\x9F\xA4\x93\xF0\x9F\xA4\x93:$@Role('0'\n)/b:$@Role('0'\n)");
  b.text(20, "UTF-8");
  return b;
}

// Long-string value labels and missing values (subtypes 21 and 22) of a variable whose names hold
// emoji; no cases. The missing values are stored 8 bytes long although the variable is 9 wide.
F longStringRecordsNonAscii() {
  F b = startFile("27 Feb 21", "10:07:25", 0);
  std::string const emoji = "\xF0\x9F\xA4\x93", shortName = "A" + emoji, longName = "a" + emoji + emoji;
  std::string const label = "label of the name";
  b.string(shortName, 9, &label);
  machineInfo(b, 25, 65001);
  floatInfo(b);
  displayParameters(b, {1, 8, 0});
  b.text(13, shortName + "=" + longName);
  caseCount64(b, 0);
  b.text(18, longName + ":$@Role('0'\n)");
  b.text(20, "UTF-8");
  b.text(21, longStringLabels(b, longName, 9,
                                        {{emoji + emoji + "b", "b" + emoji + emoji}, {"a", "first letter"}, {"b", "second letter"}}));
  b.text(22, b.i32(static_cast<std::int32_t>(longName.size())) + longName + std::string(1, '\2') + b.i32(8) +
                           "a       b       ");
  return b;
}

// A writer that forges its records: machine info of release 1 on machine 0, LOWEST stored as the
// system-missing value, the 64-bit case count's first word a floating-point 1 and its count 0
// while the header says 3; long names with a trailing tab; subtype 21 before subtype 20.
F forgedRecords() {
  F b = startFile("05 Oct 18", "01:36:53", 3);
  std::string const paid = "amount paid";
  b.numeric("V00001", &paid, 0, {}, numberFormat(4, 2));
  b.string("V00002", 28, &paid);
  b.numeric("V00003", nullptr, 0, {}, F::format(3, 8, 2));
  b.valueLabels({{b.f64(222), "refund"}, {b.f64(13.22), "fee"}}, {1});
  b.integers(3, {1, 0, 0, 0, 1, 1, 2, 65001});
  b.extension(4, 8, 3, b.f64(-DBL_MAX) + b.f64(DBL_MAX) + b.f64(-DBL_MAX));
  displayParameters(b, {3, 16, 1, 1, 8, 0, 1, 8, 1});
  b.text(13, "V00001=amount\tV00002=town_of_birth\tV00003=Rank_Order\t");
  b.extension(16, 8, 2, b.f64(1) + b.i64(0));
  b.text(18, "amount:$@Role('4'\n)/town_of_birth:$@Role('5'\n)/Rank_Order:$@Role('0'\n)");
  b.text(21, longStringLabels(b, "town_of_birth", 28, {{"m", "male"}, {"f", "female"}}));
  b.text(20, "UTF-8");
  return b;
}

// Subtype 24 (the data view's XML), MR sets of subtype 7 (a category set with an empty label, a
// dichotomy set), a range plus a value, the windows-1252 encoding.
F dataViewRecord() {
  F b = startFile("05 Dec 14", "11:23:13", 6);
  std::string const colour = "Favourite colour", born = "Birth date", score = "Score with a missing range",
                    comment = "Free comment, 40 bytes";
  b.numeric("COLOUR", &colour, 3, {7, 8, 99}, numberFormat(6, 0));
  b.numeric("BORN", &born, 0, {}, F::format(23, 10, 0));
  b.numeric("SCORE", &score, -3, {-999, 0, 999}, numberFormat(6, 2));
  b.string("COMMENT", 40, &comment);
  for (int i = 1; i <= 3; ++i) {
    std::string label = "Pet kind #" + std::to_string(i);
    b.numeric("PET" + std::to_string(i), &label, 0, {}, numberFormat(6, 2));
  }
  for (char const* name : {"GRID_A", "GRID_B", "GRID_C"}) b.string(name, 1);
  b.numeric("VISIT", nullptr, 0, {}, F::format(39, 10, 0));
  b.numeric("PERIOD", nullptr, 0, {}, F::format(29, 8, 0));
  b.valueLabels({{b.f64(1), "red"}, {b.f64(2), "green"}, {b.f64(3), "blue"}}, {1});
  b.valueLabels({{b.f64(999), "skipped"}}, {3});
  b.valueLabels({{"a", "always"}, {"o", "often"}, {"s", "seldom"}, {"n", "never"}}, {12, 13, 14});
  machineInfo(b, 21, 1252);
  floatInfo(b);
  b.text(7, "$grid=C 0  grid_a grid_b grid_c\n$pets=D1 1 12 Pets at home pet1 pet2 pet3\n");
  displayParameters(b, {1, 6, 1, 3, 15, 1, 3, 6, 1, 1, 6, 0, 1, 6, 1, 1, 6, 1, 1, 6, 1, 1, 8, 0, 1, 8, 0, 1, 8, 0,
                        0, 8, 1, 0, 8, 1});
  b.text(13, "COLOUR=colour\tBORN=born\tSCORE=score\tCOMMENT=comment\tPET1=pet1\tPET2=pet2\tPET3=pet3\t"
             "GRID_A=grid_row_1\tGRID_B=grid_row_2\tGRID_C=grid_row_3\tVISIT=visit\tPERIOD=period");
  caseCount64(b, 6);
  b.text(20, "windows-1252");
  b.text(24, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><DATAVIEW_TABLE_FORMAT VERSION=\"1\">"
             "<COLUMN_WIDTHS VALUE=\"8 8 8 20\"/></DATAVIEW_TABLE_FORMAT>");
  return b;
}

// The date record (subtype 6) naming the YEAR_, QUARTER_, MONTH_ and DATE_ variables, with a weight
// variable after a long string (its index counts the continuations), MR sets, file and variable
// attributes, documents, a file label and every kind of missing value.
F dateInfoRecord() {
  F b = startFile("21 Dec 12", "11:43:20", 9);
  b.fileLabel = "Panel of shoppers";
  std::string const age = "Age in years", shortStr = "A one-byte code", longStr = "Remarks, 100 bytes",
                    year = "YEAR, not periodic", quarter = "QUARTER, period 4", month = "MONTH, period 12",
                    date = "Date.  Format:  \"MMM YYYY\"              ";
  b.numeric("RESPID", nullptr, 0, {}, F::format(16, 6, 0));
  b.numeric("AGE", &age, -2, {0, 18}, numberFormat(3, 0));
  b.numeric("SPEND1", nullptr, -2, {-DBL_MAX, -1});
  b.numeric("SPEND2", nullptr, -3, {-DBL_MAX, -1, 999});
  b.numeric("SPEND3", nullptr, 3, {999, 888, 777});
  b.numeric("AVGSPEND");
  for (char const* name : {"T1", "T2", "T3"}) b.numeric(name);
  b.string("CODE", 1, &shortStr, {"x", "y"});
  b.string("REMARKS", 100, &longStr);
  int const weight = b.records() + 1;
  b.numeric("WEIGHT");
  int const firstDate = b.records() + 1;
  b.numeric("YEAR_", &year, 0, {}, numberFormat(8, 0));
  b.numeric("QUARTER_", &quarter, 0, {}, numberFormat(1, 0));
  b.numeric("MONTH_", &month, 0, {}, numberFormat(2, 0));
  b.string("DATE_", 8, &date);
  b.weightIndex = weight;
  b.valueLabels({{b.f64(18), "adult "}, {b.f64(65), "senior"}, {b.f64(99), "oldest"}}, {2});
  b.valueLabels({{"x", "excluded"}}, {10});
  b.documents({"Wave 2 of the shoppers' panel", "   (Entered 21-Dec-2012)"});
  machineInfo(b, 20, 65001);
  floatInfo(b);
  b.integers(6, {0, 12, 3, 1, 2012, 1, firstDate, 2, 0, firstDate + 1, 3, 4, firstDate + 2, 4, 12, firstDate + 3, 11, 12});
  b.text(7, "$mixed=C 10 age and t1 age t1\n$spend=C 14 kinds of spend spend1 spend2 spend3\n"
            "$T=D1 1 0  t1 t2 t3\n");
  displayParameters(b, {1, 10, 0, 3, 10, 0, 3, 14, 1, 3, 14, 1, 3, 15, 2, 3, 11, 1, 1, 10, 1, 1, 10, 1, 1, 10, 1,
                        1, 10, 0, 1, 40, 0, 3, 10, 1, 3, 8, 1, 3, 8, 1, 3, 8, 1, 1, 8, 0});
  b.text(13, "RESPID=RespId\tAGE=Age\tSPEND1=Spend1\tSPEND2=Spend2\tSPEND3=Spend3\tAVGSPEND=AvgSpend\t"
             "T1=T1\tT2=T2\tT3=T3\tCODE=Code\tREMARKS=Remarks\tWEIGHT=Weight\t"
             "YEAR_=YEAR_\tQUARTER_=QUARTER_\tMONTH_=MONTH_\tDATE_=DATE_");
  caseCount64(b, 9);
  b.text(17, "$VariableView2('name'\n'type'\n'label'\n'@Formula'\n'@Notes'\n)VersionNumber('1'\n)");
  b.text(18, "RespId:Notes(''\n)$@Role('0'\n)/Age:Notes(''\n)$@Role('4'\n)/Spend1:$@Role('1'\n)/"
             "AvgSpend:Formula('mean(Spend1, Spend2, Spend3)'\n)DerivedFrom('Spend1'\n'Spend2'\n"
             "'Spend3'\n)Notes(''\n)$@Role('0'\n)");
  b.text(20, "UTF-8");
  return b;
}

// Named .zsav but bytecode-compressed with the $FL2 signature; the product record (subtype 10).
F fl2NamedZsav() {
  F b = startFile("09 Feb 13", "21:35:25", 2);
  b.fileLabel = "Made by the test builder";
  b.string("NOTE", 50);
  b.numeric("PRICE");
  b.numeric("QTY");
  b.string("SOLDON", 10);
  machineInfo(b, 19, 65001);
  floatInfo(b);
  b.text(10, "Made by the transspace test builder; bytecode, although the name says .zsav");
  displayParameters(b, {0, 50, 0, 0, 8, 0, 0, 8, 0, 0, 10, 0});
  b.text(13, "NOTE=note\tPRICE=price\tQTY=qty\tSOLDON=soldOn");
  caseCount64(b, 2);
  b.text(18, "note:$@Role('0'\n)/price:$@Role('0'\n)/qty:$@Role('0'\n)/soldOn:$@Role('0'\n)");
  b.text(20, "UTF-8");
  return b;
}

// A damaged file: a short name padded with NULs, and a subtype 21 record whose first name length
// is negative and whose rest is another record's text with NULs in it.
F corruptExtensionHeaders() {
  F b = startFile("30 Jan 13", "14:34:58", 10);
  for (char const* name : {"Q1", "Q2", "Q3"}) b.numeric(name);
  b.variableRecord(1, "Q4\0\0\0\0\0\0"s, nullptr, 0, {}, F::format(1, 1, 0), F::format(1, 1, 0));
  machineInfo(b, 12, 2);
  floatInfo(b);
  displayParameters(b, {3, 8, 1, 1, 8, 1, 3, 8, 1, 1, 8, 0});
  b.text(21, b.i32(-3) + "Q1=q1\tQ" + std::string(16, '\0') + "2=q2\tQ3=q3\t\xFE\xFEQ4=q4\tQ5=q5\tQ6=q6\tQ7=q7");
  return b;
}

// System-missing stored as a NaN in the float constants (as ReadStat writes it), big-endian and
// uncompressed.
F nanSystemMissing() {
  F b(true);
  b.compression = 0;
  b.caseCount = 3;
  std::string const length = "Leaf length";
  b.numeric("LEAFLEN", &length, -2, {-DBL_MAX, 0});
  b.string("TREE", 10);
  machineInfo(b, 1, 65001);
  b.extension(4, 8, 3, b.f64(std::nan("")) + b.f64(DBL_MAX) + b.f64(-DBL_MAX));
  displayParameters(b, {3, 8, 1, 1, 10, 0});
  b.text(13, "LEAFLEN=Leaf_Length\tTREE=Tree");
  return b;
}

// Every record kind the reader decodes, in one small file: the fuzzer's widest starting point.
F allRecords(bool bigEndian) {
  F b = startFile("01 Jan 20", "10:00:00", 10, bigEndian);
  b.weightIndex = 1;
  b.fileLabel = "label";
  std::string const lab = "lab";
  b.numeric("A", &lab, -2, {1, 2});
  b.string("S", 20, nullptr, {"ab"});
  b.veryLongString({"VL", "VL0"}, 8);
  b.numeric("B");
  b.valueLabels({{b.f64(1), "one"}, {b.f64(2), "two"}}, {1});
  b.documents({"doc line"});
  b.integers(3, {20, 0, 1, -1, 1, 1, bigEndian ? 1 : 2, 65001});
  floatInfo(b);
  displayParameters(b, {3, 8, 1, 1, 20, 0, 1, 40, 0, 1, 8, 0, 2, 8, 2});
  b.text(13, "A=alpha\tS=str\tVL=verylong\tB=beta");
  b.text(14, "VL=00300\0\t"s);
  b.text(5, "Set1= alpha beta\r\nEmpty= \n");
  b.text(7, "\n$c=C 3 lab a b\n$d=D1 1 0  a b\n");
  b.text(19, "$e=E 11 1 1 0  a b\n$f=E 1 1 2 5 label a b\n");
  caseCount64(b, 10);
  b.text(17, "Owner('me'\n)List('a'\n'b'\n)");
  b.text(18, "alpha:Note('n1'\n)$@Role('1'\n)/verylong:X('y'\n)");
  b.text(20, "UTF-8");
  b.text(21, longStringLabels(b, "verylong", 300, {{"abc", "ABC"}}));
  b.text(22, b.i32(3) + "str" + std::string(1, '\2') + b.i32(8) + "x       y       ");
  b.integers(6, {0, 1, 2});
  return b;
}

// Variable attributes whose text ends in binary garbage with NULs and no closing parenthesis:
// attribute parsing once looped forever on such a record.
F attributeGarbage() {
  F b;
  b.numeric("SOMEDATE");
  b.numeric("OTHER");
  b.text(13, "SOMEDATE=someDate\tOTHER=other");
  b.text(18, "someDate:Notes(''\n)$@Role('0'\n)@\0\0\0\0\x80\xD9\xE4@\x7F\x7F" "deee\xFD\xFD\0\0\0\xA4"
                "DI\tBx       \xFD\xFD\xFD\xFD\xFE\xFE\xFE\xFEqwertyuiop/other:Notes('open"s);
  return b;
}

// An extension record whose header claims more bytes than the file holds.
F extensionBeyondTheEnd() {
  F b;
  b.numeric("X");
  b.raw(b.i32(7) + b.i32(13) + b.i32(1) + b.i32(4096) + "X=x");
  return b;
}

struct Named {
  char const* name;
  F (*make)();
  bool seed;  // small enough to be a fuzz seed too
};

std::vector<Named> const fixtures = {
    {"big-endian.sav", bigEndian, true},
    {"only-subtypes-3-4.sav", onlySubtypes3And4, true},
    {"variable-sets-crlf.sav", variableSetsCrlf, true},
    {"variable-sets-short-names.sav", variableSetsShortNames, true},
    {"release13-very-long-strings.sav", release13VeryLongStrings, true},
    {"release14-very-long-strings.sav", release14VeryLongStrings, true},
    {"max-string.sav", maxString, false},
    {"long-string-records-non-ascii.sav", longStringRecordsNonAscii, true},
    {"forged-records.sav", forgedRecords, true},
    {"data-view-record.sav", dataViewRecord, true},
    {"date-info-record.sav", dateInfoRecord, true},
    {"fl2-named.zsav", fl2NamedZsav, true},
    {"corrupt-extension-headers.sav", corruptExtensionHeaders, true},
    {"nan-system-missing.sav", nanSystemMissing, true},
};

}  // namespace

std::vector<BuilderFile> builderFixtures() {
  std::vector<BuilderFile> files;
  for (auto const& f : fixtures) files.push_back({fixtureDir + f.name, f.make().build()});
  return files;
}

std::vector<BuilderFile> builderFuzzSeeds() {
  std::vector<BuilderFile> files;
  for (auto const& f : fixtures) {
    if (f.seed) files.push_back({seedDir + "builder-" + f.name, f.make().build()});
  }
  files.push_back({seedDir + "builder-all-records-le.sav", allRecords(false).build()});
  files.push_back({seedDir + "builder-all-records-be.sav", allRecords(true).build()});
  files.push_back({seedDir + "builder-attribute-garbage.sav", attributeGarbage().build()});
  F beyond = extensionBeyondTheEnd();
  files.push_back({seedDir + "builder-extension-beyond-the-end.sav", beyond.buildUnterminated()});
  return files;
}

}  // namespace savfiletest
