// An XML text parsed with Xerces (independently of the tool) into a plain tree, for checking the
// content of `transspace dict` output.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace clitest {

struct XmlElement {
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes;  // in document order
  std::string text;                                             // text children, whitespace-only ones left out
  std::vector<XmlElement> children;

  // The value of the attribute `attributeName`, or "<absent>".
  std::string attribute(std::string const& attributeName) const;
  std::vector<XmlElement const*> childrenNamed(std::string const& childName) const;
};

// Parses `xml` without namespace processing; on a parse error returns false and says why in `error`.
bool parseXml(std::string const& xml, XmlElement& root, std::string& error);

// A one-line canonical text of the tree: attributes sorted by name, whitespace-only text dropped.
// Two documents that differ only by indentation have the same canonical text.
std::string canonicalText(XmlElement const& element);

}  // namespace clitest
