// Print and write formats: from the file's packed format word to the host's format codes.
#pragma once

#include <cstdint>
#include <string>

namespace savfile {

struct Format {
  int type = 5;  // the host's format code
  int width = 8;
  int decimals = 2;
};

// Maps a format type code as written on disk to the host's code; 0 when the host has no name
// for it. Codes 1..39 and 42..53 and 85/86 are the same on both sides. On disk, 40 and 41 are
// MTIME and YMDHMS (so PSPP and ReadStat write them, and no other writer is known to put a
// format with those codes on a variable), while the host numbers those two 85 and 86 and gives
// 40 and 41 to G and LNUMBER, which are not variable formats. So disk 40 -> 85 and 41 -> 86.
int hostFormatType(int diskType);

// The host's name of a format type code, "" when it has none.
char const* formatTypeName(int hostType);

// Decodes a packed format word (type << 16 | width << 8 | decimals) for a variable of the given
// type (0 numeric, else the string width). Returns false when it is not valid for that
// variable; `out` then holds the default (F8.2, or A<width>) and `problem` says why.
bool decodeFormat(std::uint32_t word, int variableWidth, Format& out, std::string& problem);

Format defaultFormat(int variableWidth);

}  // namespace savfile
