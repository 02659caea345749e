#include "csvtables.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace savfiletest {

namespace {

// One CSV record (quoted fields may hold commas, doubled quotes and line breaks). False at the end.
bool readRecord(std::istream& in, CsvRow& row) {
  row.clear();
  std::string field;
  bool quoted = false, any = false;
  char c;
  while (in.get(c)) {
    any = true;
    if (quoted) {
      if (c == '"') {
        if (in.peek() == '"') {
          field += '"';
          in.get(c);
        } else {
          quoted = false;
        }
      } else {
        field += c;
      }
    } else if (c == '"') {
      quoted = true;
    } else if (c == ',') {
      row.push_back(field);
      field.clear();
    } else if (c == '\n') {
      row.push_back(field);
      return true;
    } else if (c != '\r') {
      field += c;
    }
  }
  if (!any) return false;
  row.push_back(field);
  return true;
}

}  // namespace

PsppReport readPsppReport(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot open " + path);
  PsppReport report;
  CsvRow row;
  CsvTable* table = nullptr;
  bool wantHeader = false;
  while (readRecord(in, row)) {
    bool blank = row.size() == 1 && row[0].empty();
    if (blank) {
      table = nullptr;
      continue;
    }
    if (!table && row.size() == 1 && row[0].rfind("Table: ", 0) == 0) {
      table = &report.tables[row[0].substr(7)];
      wantHeader = true;
      continue;
    }
    if (table && wantHeader) {
      table->header = row;
      wantHeader = false;
    } else if (table) {
      table->rows.push_back(row);
    } else {
      report.notes.push_back(row[0]);
    }
  }
  return report;
}

}  // namespace savfiletest
