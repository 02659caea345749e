// XML texts an attacker or a broken program would hand the library: shared by the tests of the
// library's bounded parse and of the command-line tool, so both roads meet the same inputs.
#pragma once

#include <cstddef>
#include <string>

namespace hostile {

// The classic expansion bomb: nine levels of entities, each ten references to the one below
// (10^9 copies of "lol" from about 1 KB of text).
inline std::string entityBomb() {
  std::string text = "<?xml version=\"1.0\"?>\n<!DOCTYPE lolz [\n <!ENTITY lol0 \"lol\">\n";
  for (int level = 1; level <= 9; ++level) {
    std::string references;
    for (int i = 0; i < 10; ++i) references += "&lol" + std::to_string(level - 1) + ";";
    text += " <!ENTITY lol" + std::to_string(level) + " \"" + references + "\">\n";
  }
  return text + "]>\n<lolz>&lol9;</lolz>\n";
}

// The same bomb made of parameter entities, which expand inside the document type itself.
inline std::string parameterEntityBomb() {
  std::string text = "<!DOCTYPE r [\n <!ENTITY % p0 \"<!-- x -->\">\n";
  for (int level = 1; level <= 9; ++level) {
    std::string references;
    for (int i = 0; i < 10; ++i) references += "%p" + std::to_string(level - 1) + ";";
    text += " <!ENTITY % p" + std::to_string(level) + " \"" + references + "\">\n";
  }
  return text + " %p9;\n]>\n<r/>\n";
}

// A document type that names an external entity, used in the content.
inline std::string externalEntity() {
  return "<?xml version=\"1.0\"?>\n<!DOCTYPE r [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>\n<r>&x;</r>\n";
}

// A document type with an external DTD and nothing else.
inline std::string externalDtd() { return "<!DOCTYPE r SYSTEM \"file:///etc/passwd\">\n<r/>\n"; }

// The plainest document type: a name and no declarations.
inline std::string plainDoctype() { return "<!DOCTYPE r>\n<r>text</r>\n"; }

// `depth` elements <e> nested in one another, the innermost holding the text "bottom".
inline std::string nested(std::size_t depth) {
  std::string text;
  text.reserve(depth * 7 + 8);
  for (std::size_t i = 0; i < depth; ++i) text += "<e>";
  text += "bottom";
  for (std::size_t i = 0; i < depth; ++i) text += "</e>";
  return text;
}

// A root element holding one text node of `size` letters.
inline std::string textNode(std::size_t size) { return "<r>" + std::string(size, 'x') + "</r>"; }

}  // namespace hostile
