// Three rich data sources for the golden files and the placement equivalence test; each has every
// section of the dictionary. Their time stamps are fixed so that the documents are deterministic.
#pragma once

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include <transspace/zorb/datasource.h>
#include <transspace/zorb/datasourcebuilder.h>

namespace dicttest {

inline double lowestDouble() {
  std::uint64_t bits = 0xFFEFFFFFFFFFFFFEull;
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// A small survey: numeric and string variables, labels absent and empty, every kind of missing
// value, numeric and string value labels, a weight, plain and multiple response sets of all shapes,
// attributes on variables and on the data source, and extension records of listed and unlisted types.
inline ZORB_DataSource surveyDataSource() {
  zorb::DataSourceBuilder b;
  b.timestamp(1795241020.0).rowCount(1523);
  b.addVariable("id").label("Respondent ID").format(5, 8, 0).measurementLevel(3).alignment(1);
  b.addVariable("sex")
      .label("Sex")
      .format(5, 1, 0)
      .measurementLevel(1)
      .missingValues({9})
      .valueLabel(1, "Male")
      .valueLabel(2, "Female")
      .valueLabel(9, "No answer");
  b.addVariable("age")
      .label("Age in years")
      .format(5, 3, 0)
      .measurementLevel(3)
      .missingRange(-9, -1)
      .valueLabel(-9, "Refused")
      .valueLabel(-1, "Don't know");
  b.addVariable("income")
      .label("")
      .printFormat(4, 12, 2)
      .writeFormat(5, 12, 2)
      .measurementLevel(3)
      .missingRange(lowestDouble(), 0, 999999.5)
      .attribute("$unit", {"USD"})
      .attributesVersion(2);
  b.addVariable("city")
      .string(12)
      .label("City of residence")
      .alignment(0)
      .measurementLevel(1)
      .displayWidth(14)
      .missingStrings({"unknown", "n a"})
      .valueLabel("BN", "Bonn")
      .valueLabel("K ln", "Cologne (cut)");
  b.addVariable("q1").label("Owns a car").format(5, 1, 0).valueLabel(0, "No").valueLabel(1, "Yes");
  b.addVariable("q2").label("Owns a bike").format(5, 1, 0).valueLabel(0, "No").valueLabel(1, "Yes");
  b.addVariable("q3").label("Owns a boat").format(5, 1, 0).missingRange(7, std::numeric_limits<double>::max());
  b.addVariable("wt")
      .label("Design weight")
      .format(5, 8, 4)
      .alignment(2)
      .displayWidth(-3)
      .attribute("note", {"raked", "trimmed at 5"})
      .attribute("empty", {});
  b.addVariable("start").label("Interview start").format(22, 20, 0).measurementLevel(3);
  b.weightVariable("wt");
  b.variableSet("Demographics", {"sex", "AGE", "city", "dropped"});
  b.variableSet("Empty set", {});
  b.dichotomySet("$own", "Ownership", "1", true, {"q1", "q2", "q3"});
  b.dichotomySet("$own2", "", "", false, {"q1", "q2"}, true);
  b.categorySet("$cat", "Categories", {"sex", "missing_var"});
  b.attribute("$VariableView", {"name", "label"}).attribute("Project", {"Survey 2026"}).attribute("", {"anonymous"});
  b.attributesVersion(5);
  b.extension(3, 4, std::string("\x00\x0F\xFF\x10\x01\x02\x03\x04", 8));
  b.extension(4, 8, std::string(16, '\x7F'));
  b.extension(7, 1, std::string("\x07\x07"));
  b.extension(11, 4, std::string(12, '\x0B'));
  b.extension(20, 1, std::string("UTF-8"));
  b.extension(12, 1, std::string());
  return b.build();
}

// Many formats and codes: every alignment and measurement level, dates and currencies, string
// variables of several widths, value labels with fractions, a weight that is the first variable.
inline ZORB_DataSource formatsDataSource() {
  zorb::DataSourceBuilder b;
  b.timestamp(0.0).rowCount(0);
  b.addVariable("w").format(5, 8, 2);
  b.addVariable("d1").label("Date").format(20, 11, 0).alignment(0).measurementLevel(2);
  b.addVariable("d2").label("American date").printFormat(23, 10, 0).writeFormat(39, 10, 0).measurementLevel(3);
  b.addVariable("t").label("Time").printFormat(21, 8, 0).writeFormat(25, 12, 2).alignment(2);
  b.addVariable("money").label("Money").printFormat(4, 10, 2).writeFormat(3, 10, 2);
  b.addVariable("pct")
      .printFormat(31, 6, 1)
      .writeFormat(32, 6, 1)
      .valueLabel(0.5, "half")
      .valueLabel(0.3333333, "third")
      .valueLabel(100, "all");
  b.addVariable("e").printFormat(17, 10, 3).writeFormat(40, 10, 3).missingValues({1e10, -0.0005, 2.0005});
  b.addVariable("cc").printFormat(33, 8, 0).writeFormat(37, 8, 0);
  b.addVariable("hex").string(4).printFormat(2, 8, 0).writeFormat(1, 4, 0).valueLabel("ab", "AB");
  b.addVariable("long").string(255).label("A long string").displayWidth(50).missingStrings({"missing value text"});
  b.addVariable("ymd").printFormat(86, 19, 0).writeFormat(85, 10, 0).measurementLevel(0);
  b.addVariable("lc").printFormat(41, 8, 0).writeFormat(53, 8, 0);
  b.weightVariable(0);
  b.variableSet("Dates", {"d1", "d2", "t", "ymd"});
  b.variableSet("Strings", {"hex", "long"});
  b.categorySet("$c", "", {"d1"}, true);
  b.attribute("$dataset", {"formats"});
  b.extension(1, 4, std::string(32, '\x00'));
  b.extension(15, 1, std::string("\xDE\xAD\xBE\xEF", 4));
  return b.build();
}

// Non-ASCII texts (the host runs in UTF-8) and characters that XML must escape.
inline ZORB_DataSource textDataSource() {
  zorb::DataSourceBuilder b;
  b.timestamp(1234567890.75).rowCount(-1);
  b.addVariable(
       "gr\xC3\xB6\xC3\x9F"
       "e")
      .label(
          "K\xC3\xB6rpergr\xC3\xB6\xC3\x9F"
          "e in cm")
      .valueLabel(150, "klein <150>")
      .valueLabel(200, "gro\xC3\x9F & \"hoch\"");
  b.addVariable("preis").label("Preis in \xE2\x82\xAC").format(4, 9, 2).missingValues({-1});
  b.addVariable("name").string(10).label("Name 'quoted'").valueLabel("M\xC3\xBCller", "a name");
  b.addVariable("gew").label("Gewicht");
  b.weightVariable("gew");
  b.variableSet("S\xC3\xA4tze", {"gr\xC3\xB6\xC3\x9F"
                                 "e",
                                 "PREIS"});
  b.dichotomySet("$m", "Mehrfach <Antwort>", "ja & nein", true, {"name"});
  b.attribute("$Kommentar", {"\xC3\xA4\xC3\xB6\xC3\xBC", "<tag>", ""});
  b.extension(8, 2, std::string("\xC3\xA4\x00\x01", 4));
  return b.build();
}

}  // namespace dicttest
