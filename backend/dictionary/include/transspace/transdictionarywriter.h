// TransDictionaryWriter: the dictionary document of a data source written as XML text straight to
// a stream, without building the document. The bytes are exactly those of the document road: the
// UTF-8 serialisation of the document value TransValue(ds) (its asMBCSXML text), and in the pretty
// layout that text as the LS serializer re-serialises it with pretty printing. Memory stays small
// whatever the size of the dictionary: the text goes out in chunks as it is made.
#pragma once

#include <transspace/transexport.h>

#include <iosfwd>
#include <stdexcept>

class ZORB_DataSource;

class TRANS_EXPORT TransDictionaryWriter {
public:
  enum class Layout { compact, pretty };

  // A text of the data source holds a character that XML 1.0 cannot carry (a control character,
  // a lone surrogate, U+FFFE or U+FFFF); the document road cannot serialise such a dictionary
  // either. Text is handed to the stream in chunks of 64 KiB: a dictionary shorter than that
  // writes nothing at all; of a longer one, the chunks before the offending character are out.
  class Unwritable : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
  };

  // Writes the whole document, declaration included, with no line end after the pretty layout's
  // own. The XML platform must be up (a TransSpace alive), as for TransValue(ds).
  static void write(ZORB_DataSource const& ds, std::ostream& out, Layout layout);
};
