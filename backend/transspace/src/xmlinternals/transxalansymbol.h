// The symbol name of Xalan's NumberToDOMString(double, XalanDOMString&), which transxalannumber.cpp
// replaces and then calls by name: the Itanium C++ ABI spelling of the function in Xalan's
// versioned namespace, so that it follows the Xalan the project is compiled against. Also compiled
// by the configure-time check of cmake/TransspaceXMLInternals.cmake.
#pragma once

#include <string>

#include <xalanc/Include/PlatformDefinitions.hpp>

#define TRANS_XALAN_TEXT_OF(name) #name
#define TRANS_XALAN_TEXT(name) TRANS_XALAN_TEXT_OF(name)

inline std::string transXalanNumberWriterSymbol() {
  std::string const space = TRANS_XALAN_TEXT(XALAN_CPP_NAMESPACE);
  return "_ZN" + std::to_string(space.size()) + space + "17NumberToDOMStringEdRNS_14XalanDOMStringE";
}
