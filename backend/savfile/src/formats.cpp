#include "formats.h"

namespace savfile {

namespace {

char const* const names[] = {
    nullptr, "A",     "AHEX",  "COMMA",  "DOLLAR", "F",     "IB",   "IBHEX", "P",    "PIB",  // 0-9
    "PK",    "RB",    "RBHEX", nullptr,  nullptr,  "Z",     "N",    "E",     nullptr, nullptr,  // 10-19
    "DATE",  "TIME",  "DATETIME", "ADATE", "JDATE", "DTIME", "WKDAY", "MONTH", "MOYR", "QYR",  // 20-29
    "WKYR",  "PERCENT", "DOT", "CCA",    "CCB",    "CCC",   "CCD",  "CCE",   "EDATE", "SDATE",  // 30-39
    "G",     "LNUMBER", "LDATE", "LTIME", "LCA",  "LCB",   "LCC",  "LCD",   "LCE",  "LCF",  // 40-49
    "LCG",   "LCH",   "LCI",   "LCJ",  // 50-53
};

bool isStringFormat(int hostType) { return hostType == 1 || hostType == 2; }

}  // namespace

int hostFormatType(int diskType) {
  if (diskType == 40) return 85;
  if (diskType == 41) return 86;
  if (diskType == 85 || diskType == 86) return diskType;
  if (diskType > 0 && diskType <= 53 && names[diskType] && diskType != 40 && diskType != 41) return diskType;
  return 0;
}

char const* formatTypeName(int hostType) {
  if (hostType == 85) return "MTIME";
  if (hostType == 86) return "YMDHMS";
  if (hostType > 0 && hostType <= 53 && names[hostType]) return names[hostType];
  return "";
}

Format defaultFormat(int variableWidth) {
  if (variableWidth == 0) return Format{5, 8, 2};
  return Format{1, variableWidth, 0};
}

bool decodeFormat(std::uint32_t word, int variableWidth, Format& out, std::string& problem) {
  int diskType = static_cast<int>((word >> 16) & 0xff);
  int width = static_cast<int>((word >> 8) & 0xff);
  int decimals = static_cast<int>(word & 0xff);
  out = defaultFormat(variableWidth);
  int type = hostFormatType(diskType);
  if (type == 0) {
    problem = "format type " + std::to_string(diskType) + " is not a known format";
    return false;
  }
  if (isStringFormat(type) != (variableWidth != 0)) {
    problem = std::string("format ") + formatTypeName(type) + " does not suit a " +
              (variableWidth ? "string" : "numeric") + " variable";
    return false;
  }
  if (width < 1) {
    problem = std::string("format ") + formatTypeName(type) + " has width 0";
    return false;
  }
  if (variableWidth != 0) decimals = 0;
  out = Format{type, width, decimals};
  return true;
}

}  // namespace savfile
