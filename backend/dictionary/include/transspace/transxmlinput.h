// TransXMLInput: the one way XML text becomes a document value, whoever hands the text in (the
// command-line tool, the Python module, anything later). The text may come from anyone, so the
// parse is bounded:
// - size: at most maxSize bytes of text. What the parse then needs grows with the text (for text
//   made mostly of tags, ten to thirty times its size); when memory runs out the parse is refused.
// - no document type declaration: a DOCTYPE is refused where it starts, before its internal
//   subset is read. A document type is where entities and default attributes are declared, and
//   both let a small text expand without bound (nested entities, an attribute default repeated
//   on every element); external entities and DTDs are never loaded either. Only the five
//   predefined entities and character references remain, and each stands for one character.
// - nesting: at most maxDepth nested elements, counted while parsing. Serialising a document and
//   reading an element's text recurse in the XML libraries once per level, so the limit keeps
//   them within any reasonable stack; a document value refuses those operations on a deeper
//   document that a host builds itself.
// Each refusal is a TransXMLInputError with a clear message.
#pragma once

#include <transspace/transexport.h>
#include <transspace/transvalue.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include <xercesc/dom/DOMDocument.hpp>

class TRANS_EXPORT TransXMLInputError : public std::runtime_error {
public:
  explicit TransXMLInputError(std::string const& message);
};

class TRANS_EXPORT TransXMLInput {
public:
  // The most elements nested in one another: the document element alone is depth 1.
  static std::size_t const maxDepth;
  // The most bytes of text.
  static std::size_t const maxSize;

  // Parses XML text (bytes in any encoding the text declares or its byte order mark shows) and
  // returns the document value; only the document element and its subtree are kept, as when a
  // value copies a document. The XML platform must be up (a TransSpace alive). Throws
  // TransXMLInputError for text that is too large, not well-formed, has a document type, nests
  // too deep or needs more memory than there is.
  static TransValue parseDocument(char const* bytes, std::size_t size);

  // The same parse, for a caller that needs the Xerces document itself (the tool's indented
  // output); the caller owns it.
  static std::unique_ptr<XERCES_CPP_NAMESPACE::DOMDocument> parseDOM(char const* bytes, std::size_t size);

  // Throws the error of a text of `size` bytes when that is more than maxSize; a caller that reads
  // the text from a file asks before reading it.
  static void checkSize(std::uintmax_t size);

  // Whether `node` has elements nested deeper than maxDepth below it (the node itself counts
  // when it is an element). Walks the tree without recursion.
  static bool tooDeep(XERCES_CPP_NAMESPACE::DOMNode const* node);
};
