# The library reaches a few implementation classes of Xerces-C and Xalan-C and replaces one Xalan
# function by its symbol name (backend/transspace/src/xmlinternals). Those are not part of the
# libraries' published interfaces and may change in any release, so the exact versions are pinned
# in the top-level CMakeLists.txt and every use is compiled, linked and run here, at configure
# time, against the installed libraries: a difference stops the configuration with a message that
# says what changed, instead of a build that behaves differently.
include(CheckCXXSourceCompiles)
include(CheckCXXSourceRuns)
include(CMakePushCheckState)

cmake_push_check_state(RESET)
set(CMAKE_REQUIRED_QUIET ON)
set(CMAKE_REQUIRED_INCLUDES ${PROJECT_SOURCE_DIR}/backend/transspace/src)
set(CMAKE_REQUIRED_LIBRARIES XercesC::XercesC XalanC::XalanC ${CMAKE_DL_LIBS})

check_cxx_source_compiles([[
#include <vector>
#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/Locator.hpp>
XERCES_CPP_NAMESPACE_USE
int main() {
  DOMDocumentImpl* document = nullptr;
  DOMElementImpl* element = nullptr;
  DOMAttrImpl* attribute = nullptr;
  XMLScanner* scanner = nullptr;
  if (document) {
    int changes = document->changes();
    DOMElement* made = document->createElementNoCheck(u"e");
    element->fParent.appendChildFast(made);
    attribute->setValueFast(u"v");
    DOMAttrMapImpl* map = element->fAttributes;
    map->reserve(std::size_t(changes));
    map->setNamedItemFast(attribute);
    Locator const* locator = scanner->getLocator();
    return int(locator->getLineNumber());
  }
  return 0;
}]] TRANSSPACE_XERCES_INTERNALS)

check_cxx_source_compiles([[
#include <xalanc/PlatformSupport/PrefixResolver.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XPath/XPathConstructionContextDefault.hpp>
#include <xalanc/XPath/XPathProcessorImpl.hpp>
using namespace XALAN_CPP_NAMESPACE;
struct Quiet : XPathConstructionContextDefault {
  void problem(eSource, eClassification, XalanDOMString const&, Locator const*, XalanNode const*) override {}
  void problem(eSource, eClassification, XalanDOMString const&, XalanNode const*) override {}
};
int main() {
  Quiet context;
  XPathProcessorImpl processor;
  XPath* xpath = nullptr;
  PrefixResolver const* resolver = nullptr;
  if (xpath) processor.initXPath(*xpath, context, XalanDOMString("1"), *resolver);
  return 0;
}]] TRANSSPACE_XALAN_INTERNALS)

check_cxx_source_runs([[
#include <dlfcn.h>
#include <xalanc/PlatformSupport/DOMStringHelper.hpp>
#include "xmlinternals/transxalansymbol.h"
using Writer = XALAN_CPP_NAMESPACE::XalanDOMString& (*)(double, XALAN_CPP_NAMESPACE::XalanDOMString&);
int main() {
  Writer declared = &XALAN_CPP_NAMESPACE::NumberToDOMString;
  void* found = dlsym(RTLD_DEFAULT, transXalanNumberWriterSymbol().c_str());
  return found != nullptr && found == reinterpret_cast<void*>(declared) ? 0 : 1;
}]] TRANSSPACE_XALAN_NUMBER_SYMBOL)
cmake_pop_check_state()

if(NOT TRANSSPACE_XERCES_INTERNALS)
  message(FATAL_ERROR "Xerces-C ${XercesC_VERSION}: the implementation classes that the library uses "
    "(DOMDocumentImpl, DOMElementImpl, DOMAttrImpl, DOMAttrMapImpl, XMLScanner) are not as expected; "
    "see backend/transspace/src/xmlinternals/transxmlinternals.cpp before building against this version")
endif()
if(NOT TRANSSPACE_XALAN_INTERNALS)
  message(FATAL_ERROR "Xalan-C ${XalanC_VERSION}: XPathProcessorImpl or XPathConstructionContextDefault "
    "is not as expected; see backend/transspace/src/xmlinternals/transxmlinternals.cpp")
endif()
if(NOT TRANSSPACE_XALAN_NUMBER_SYMBOL)
  message(FATAL_ERROR "Xalan-C ${XalanC_VERSION}: NumberToDOMString(double, XalanDOMString&) is not found "
    "under the symbol name that backend/transspace/src/xmlinternals/transxalansymbol.h spells")
endif()
