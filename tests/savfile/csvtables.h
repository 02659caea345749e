// Reads the CSV output of PSPP (`pspp -o out.csv`): its tables ("Table: Name", a header row, rows
// up to a blank line) and its notes, so tests can compare the reader with what PSPP reported.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace savfiletest {

using CsvRow = std::vector<std::string>;

struct CsvTable {
  CsvRow header;
  std::vector<CsvRow> rows;
};

struct PsppReport {
  std::map<std::string, CsvTable> tables;
  std::vector<std::string> notes;  // single-field lines that are not tables (notes, warnings)
};

PsppReport readPsppReport(std::string const& path);

}  // namespace savfiletest
