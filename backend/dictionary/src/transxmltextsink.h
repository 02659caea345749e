// TransXMLTextSink: writes the dictionary's content as UTF-8 XML text, byte for byte as Xerces' LS
// serializer writes the same elements: the declaration, attributes in the order of their names
// (the order in which a Xerces element keeps them), the empty-element form, the escapes of
// attribute values (&amp; &lt; &quot; and character references for tab, line feed and carriage
// return) and, in the pretty layout, its line breaks and two-space indentation (a blank line
// before each child of the root and before the root's end tag). The text is handed to the stream
// in chunks.
#pragma once

#include "dictionary/transdictionarysink.h"
#include <transspace/transdictionarywriter.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

class TransXMLTextSink : public TransDictionarySink {
public:
  using Layout = TransDictionaryWriter::Layout;

  TransXMLTextSink(std::ostream& out, Layout layout);
  TransXMLTextSink(TransXMLTextSink const&) = delete;
  TransXMLTextSink& operator=(TransXMLTextSink const&) = delete;

  // The XML declaration that opens the document.
  void declaration();
  void startElement(XMLCh const* tag) override;
  void attribute(XMLCh const* name, XMLCh const* value) override;
  void endElement() override;
  // Hands the rest of the text to the stream.
  void flush();

private:
  struct PendingAttribute {
    XMLCh const* name;
    std::size_t begin;  // of the escaped value in values_
    std::size_t end;
  };

  void closeStartTag();
  void lineBreak(std::size_t depth, bool blankLine);
  void appendName(XMLCh const* name);
  void appendEscaped(XMLCh const* value, std::string& to);

  std::ostream& out_;
  bool const pretty_;
  std::string text_;
  std::vector<XMLCh const*> open_;  // tags of the elements not yet ended
  bool startTagOpen_ = false;       // the last start tag still takes attributes
  std::vector<PendingAttribute> attributes_;
  std::string values_;
};
