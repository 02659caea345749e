// The `transspace` binary on hostile XML files: each is refused with a clear message naming the
// file and exit status 2 (never a crash or a hang), and what is just within a limit is answered.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "hostilexml.h"
#include "subprocess.h"

namespace {

using clitest::Outcome;
using clitest::runCli;
using clitest::TempDir;

std::string const doctypeRefused = "a document type declaration (DOCTYPE) is not accepted\n";
std::string const tooDeep = "elements are nested deeper than the limit of 1000 levels\n";

// The query of `text` saved as `name`; the path counts the elements.
Outcome queryFile(TempDir const& dir, std::string const& name, std::string const& text,
                  std::string const& path = "count(//*)") {
  return runCli({"query", dir.write(name, text), "/", path});
}

void expectRefused(Outcome const& o, std::string const& message) {
  EXPECT_EQ(o.signal, 0) << o.err;
  EXPECT_EQ(o.exitCode, 2) << o.err;
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err.rfind("transspace: ", 0), 0u) << o.err;
  EXPECT_EQ(o.err.substr(o.err.size() - std::min(o.err.size(), message.size())), message) << o.err;
}

TEST(CliHostileInput, TheEntityExpansionBombIsRefused) {
  TempDir dir;
  Outcome const o = queryFile(dir, "bomb.xml", hostile::entityBomb());
  expectRefused(o, doctypeRefused);
  EXPECT_EQ(o.err, "transspace: " + dir.path("bomb.xml") + ": line 2, column 16: " + doctypeRefused);
}

TEST(CliHostileInput, AParameterEntityBombIsRefused) {
  TempDir dir;
  expectRefused(queryFile(dir, "pbomb.xml", hostile::parameterEntityBomb()), doctypeRefused);
}

TEST(CliHostileInput, AnExternalEntityOrDtdIsNeverLoaded) {
  TempDir dir;
  Outcome const entity = queryFile(dir, "entity.xml", hostile::externalEntity(), "string(/r)");
  expectRefused(entity, doctypeRefused);
  EXPECT_EQ(entity.err.find("root:"), std::string::npos);
  expectRefused(queryFile(dir, "dtd.xml", hostile::externalDtd()), doctypeRefused);
}

TEST(CliHostileInput, APlainDoctypeIsRefused) {
  TempDir dir;
  expectRefused(queryFile(dir, "doctype.xml", hostile::plainDoctype()), doctypeRefused);
}

TEST(CliHostileInput, NestingAtTheLimitIsAnswered) {
  TempDir dir;
  Outcome const o = queryFile(dir, "deep.xml", hostile::nested(1000), "count(//e)");
  EXPECT_EQ(o.exitCode, 0) << o.err;
  EXPECT_EQ(o.out, "1000\n");
  Outcome const pretty = runCli({"dict", "--pretty", dir.path("deep.xml")});
  EXPECT_EQ(pretty.exitCode, 0) << pretty.err;
  EXPECT_NE(pretty.out.find("bottom"), std::string::npos);
}

TEST(CliHostileInput, NestingJustOverTheLimitIsRefused) {
  TempDir dir;
  Outcome const o = queryFile(dir, "deeper.xml", hostile::nested(1001));
  expectRefused(o, tooDeep);
  EXPECT_EQ(o.err, "transspace: " + dir.path("deeper.xml") + ": line 1, column 3004: " + tooDeep);
}

TEST(CliHostileInput, NestingOfAHundredThousandLevelsIsRefused) {
  TempDir dir;
  expectRefused(queryFile(dir, "deepest.xml", hostile::nested(100000)), tooDeep);
  expectRefused(runCli({"dict", dir.path("deepest.xml")}), tooDeep);
}

TEST(CliHostileInput, AHundredMegabyteTextNodeIsRefusedBeforeItIsRead) {
  TempDir dir;
  Outcome const o = queryFile(dir, "huge.xml", hostile::textNode(100 * 1000 * 1000));
  expectRefused(o, "the XML text has 100000007 bytes, more than the limit of 67108864\n");
}

TEST(CliHostileInput, AQueryNestedTooDeepIsNoResult) {
  TempDir dir;
  std::string const path = std::string(1001, '(') + "1" + std::string(1001, ')');
  Outcome const o = queryFile(dir, "small.xml", "<r/>", path);
  EXPECT_EQ(o.signal, 0);
  EXPECT_EQ(o.exitCode, 1) << o.err;
  Outcome const within = queryFile(dir, "small.xml", "<r/>", std::string(1000, '(') + "1" + std::string(1000, ')'));
  EXPECT_EQ(within.out, "1\n");
}

}  // namespace
