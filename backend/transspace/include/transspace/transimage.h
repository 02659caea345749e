// TransImage: a plain record that the space files under a group name and an image name.
// The space reads only `name`; `data`, `text` and `number` are the host's and merely carried.
#pragma once

#include <transspace/transexport.h>
#include <transspace/transstring.h>

#include <cstdint>
#include <string>

// Default construction, copy, assignment and destruction are the implicit ones, member by member.
// A default-constructed image leaves `number` uninitialised, as a plain integer member is.
struct TRANS_EXPORT TransImage {
  TransString name;
  std::string data;  // any bytes
  TransString text;
  std::int32_t number;
};
