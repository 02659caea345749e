// `transspace dict`: the dictionary document of FILE. Exposes the re-indentation it prints an XML
// file with, so that the tests can compare the text road of a system file with it.
#pragma once

#include <string>

namespace cli {

// Compact XML re-serialised with pretty printing, as `dict --pretty` shows an XML file; the text
// road of a system file's dictionary gives the same bytes for its document's compact text.
std::string indent(std::string const& xml);

}  // namespace cli
