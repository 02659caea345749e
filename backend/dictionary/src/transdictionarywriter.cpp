#include "core/transconfig.h"

#include <transspace/transdictionarywriter.h>

#include "dictionary/transdictionarycontent.h"
#include "transxmltextsink.h"

void TransDictionaryWriter::write(ZORB_DataSource const& ds, std::ostream& out, Layout layout) {
  TransXMLTextSink sink(out, layout);
  sink.declaration();
  TransDictionaryContent content(sink);
  content.document(ds);  // an Unwritable character leaves the last chunk unwritten
  sink.flush();
}
