// ASCII-only case mapping shared by the model and the builder. Variable names are compared the way
// the host compares them: only the 26 ASCII letters fold, every other byte (including the bytes of
// multibyte characters) is left alone, so the result never depends on the process's locale.
#pragma once

#include <string>

namespace zorb {
namespace detail {

inline char asciiUpper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }
inline char asciiLower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

inline std::string asciiUpper(std::string text) {
  for (char& c : text) c = asciiUpper(c);
  return text;
}

inline std::string asciiLower(std::string text) {
  for (char& c : text) c = asciiLower(c);
  return text;
}

}  // namespace detail
}  // namespace zorb
