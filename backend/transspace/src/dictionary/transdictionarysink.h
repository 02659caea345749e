// TransDictionarySink: where the dictionary's content goes, element by element. The content
// (TransDictionaryContent) says what the dictionary holds, in document order; a sink makes it into
// something: Xerces elements (TransDOMSink) or XML text (TransXMLTextSink).
#pragma once

#include <xercesc/util/XercesDefs.hpp>

class TransDictionarySink {
public:
  virtual ~TransDictionarySink() = default;

  // An element begins; its attributes follow, then its children, then endElement.
  virtual void startElement(XMLCh const* tag) = 0;
  // One attribute of the element begun last (or of the element the sink was opened on), as
  // zero-terminated UTF-16. The content writes each name at most once per element.
  virtual void attribute(XMLCh const* name, XMLCh const* value) = 0;
  virtual void endElement() = 0;
};
