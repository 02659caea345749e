// In process: how the tool tells a system file from an XML document, and cli::run on damaged input
// (every prefix of demo.sav), where a subprocess per case would be slow.
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "command.h"
#include "inputdocument.h"
#include "savfilebuilder.h"
#include "subprocess.h"

namespace {

using cli::InputKind;
using cli::sniffInputKind;
using clitest::demoSav;
using clitest::readFile;
using clitest::TempDir;

struct RunResult {
  int status;
  std::string out, err;
};

RunResult runInProcess(std::vector<std::string> const& arguments) {
  std::ostringstream out, err;
  int const status = cli::run(cli::parseCommandLine(arguments), out, err);
  return {status, out.str(), err.str()};
}

std::vector<std::string> dictOf(std::string const& file) { return {"dict", file}; }

TEST(SniffInputKind, SystemFilesByTheirMagicWhateverTheirName) {
  TempDir dir;
  EXPECT_EQ(sniffInputKind(demoSav()), InputKind::SystemFile);
  std::string const header = readFile(demoSav()).substr(0, 176);
  EXPECT_EQ(sniffInputKind(dir.write("plain", header)), InputKind::SystemFile);
  EXPECT_EQ(sniffInputKind(dir.write("fl3.xml", "$FL3" + header.substr(4))), InputKind::SystemFile);
  EXPECT_EQ(sniffInputKind(dir.write("ebcdic2", "\x5b\xc6\xd3\xf2 rest")), InputKind::SystemFile);
  EXPECT_EQ(sniffInputKind(dir.write("ebcdic3", "\x5b\xc6\xd3\xf3 rest")), InputKind::SystemFile);
}

TEST(SniffInputKind, XmlDocumentsAndOtherText) {
  TempDir dir;
  EXPECT_EQ(sniffInputKind(dir.write("a.xml", "<a/>")), InputKind::XmlDocument);
  EXPECT_EQ(sniffInputKind(dir.write("noext", "<?xml version=\"1.0\"?><a/>")), InputKind::XmlDocument);
  EXPECT_EQ(sniffInputKind(dir.write("fl4", "$FL4 is no magic")), InputKind::XmlDocument);
  EXPECT_EQ(sniffInputKind(dir.write("empty.xml", "")), InputKind::XmlDocument);
}

TEST(SniffInputKind, ANameEndingInSavOrZsavMeansASystemFileEvenWhenTooShortForTheMagic) {
  TempDir dir;
  EXPECT_EQ(sniffInputKind(dir.write("empty.sav", "")), InputKind::SystemFile);
  EXPECT_EQ(sniffInputKind(dir.write("two.sav", "$F")), InputKind::SystemFile);
  EXPECT_EQ(sniffInputKind(dir.write("UPPER.SAV", "x")), InputKind::SystemFile);
  EXPECT_EQ(sniffInputKind(dir.write("c.zsav", "<a/>")), InputKind::SystemFile);
  EXPECT_EQ(sniffInputKind(dir.write("sav", "<a/>")), InputKind::XmlDocument);
  EXPECT_EQ(sniffInputKind(dir.write("a.sav.xml", "<a/>")), InputKind::XmlDocument);
}

TEST(SniffInputKind, UnreadableInputIsAnInputErrorNamingTheFile) {
  TempDir dir;
  for (std::string const& path : {dir.path("missing.sav"), dir.path("")}) {
    try {
      sniffInputKind(path);
      ADD_FAILURE() << "no InputError for " << path;
    } catch (cli::InputError const& e) {
      EXPECT_NE(e.message.find(path), std::string::npos) << e.message;
    }
  }
}

TEST(Run, HelpAndVersionWriteToOut) {
  RunResult result = runInProcess({"--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, cli::usageText());
  EXPECT_EQ(result.err, "");
  result = runInProcess({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out.rfind("transspace ", 0), 0u) << result.out;
  EXPECT_EQ(result.err, "");
}

// Every prefix of demo.sav that ends inside the dictionary is an error that names the file and the
// offset; a prefix that keeps the whole dictionary reads (the tool never reads the data).
TEST(Run, EveryTruncationOfDemoSavIsACleanErrorOrAFullRead) {
  std::string const demo = readFile(demoSav());
  std::string const termination("\xe7\x03\x00\x00\x00\x00\x00\x00", 8);  // record type 999 and its filler
  std::size_t const dictionaryEnd = demo.find(termination, 176) + termination.size();
  ASSERT_NE(dictionaryEnd, std::string::npos + termination.size());
  ASSERT_LT(dictionaryEnd, demo.size());

  RunResult const whole = runInProcess(dictOf(demoSav()));
  ASSERT_EQ(whole.status, 0) << whole.err;

  TempDir dir;
  std::string const file = dir.path("truncated.sav");
  // Every length through the header and the first records, then a stride of 3 (which meets every
  // alignment of the 4- and 8-byte fields), and every length around the end of the dictionary.
  std::vector<std::size_t> lengths;
  for (std::size_t length = 0; length <= demo.size(); ++length) {
    bool const nearEnd = length + 16 >= dictionaryEnd && length <= dictionaryEnd + 16;
    if (length < 256 || length % 3 == 0 || nearEnd || length == demo.size()) lengths.push_back(length);
  }
  for (std::size_t length : lengths) {
    dir.write("truncated.sav", demo.substr(0, length));
    RunResult const result = runInProcess(dictOf(file));
    if (length < dictionaryEnd) {
      ASSERT_EQ(result.status, 2) << "length " << length;
      EXPECT_EQ(result.out, "") << "length " << length;
      EXPECT_EQ(result.err.rfind("transspace: " + file + ": near offset 0x", 0), 0u)
          << "length " << length << ": " << result.err;
      EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << "one line: " << result.err;
    } else {
      ASSERT_EQ(result.status, 0) << "length " << length << ": " << result.err;
      EXPECT_EQ(result.out, whole.out) << "length " << length;
    }
  }
}

// A label with control characters (a word processor's vertical tab) still gives a dictionary: the
// reader puts blanks in their place and says so.
TEST(Run, ALabelWithControlCharactersIsExported) {
  TempDir dir;
  savfiletest::SavFileBuilder b;
  std::string const label = "line one\x0Bline two\x01";
  b.numeric("x", &label);
  RunResult const result = runInProcess(dictOf(dir.write("controls.sav", b.build())));
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("label=\"line one line two \""), std::string::npos) << result.out;
  EXPECT_NE(result.err.find("control character(s) that XML cannot carry were replaced by blanks"), std::string::npos);
}

TEST(Printable, ControlCharactersOfFileTextAreShownEscaped) {
  EXPECT_EQ(cli::printable("a\x1B[31mred\x7F\tb"), "a\\x1B[31mred\\x7F\\x09b");
  EXPECT_EQ(cli::printable("caf\xC3\xA9 near offset 0x1a4"), "caf\xC3\xA9 near offset 0x1a4");
}

}  // namespace
