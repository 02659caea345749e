// The XML Schema of the dictionary document (schema/dictionary-1.0.xsd), compiled into the tool.
#pragma once

#include <string_view>

namespace cli {

std::string_view dictionarySchema();

}  // namespace cli
