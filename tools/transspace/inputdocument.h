// Turns the FILE of the command line into a document value: an SPSS system file into the value of
// its dictionary, anything else into the value of the XML document it holds.
#pragma once

#include <iosfwd>
#include <string>

#include <xercesc/util/XercesDefs.hpp>

#include "transvalue.h"

namespace cli {

// The input cannot be read; the message names the file and, where known, the place.
struct InputError {
  std::string message;
};

enum class InputKind { SystemFile, XmlDocument };

// Decides by the first bytes: "$FL2" or "$FL3" (ASCII or EBCDIC) mean a system file, and so does
// a name ending in .sav or .zsav. Throws InputError for a directory or a file that cannot be opened.
InputKind sniffInputKind(std::string const& path);

// A Xerces text (message, name) in UTF-8; empty for null.
std::string toUtf8(XMLCh const* text);

// The text with control characters shown as \xNN: messages of the reader may quote the file's
// own bytes, and a hostile file must not drive the terminal.
std::string printable(std::string const& text);

// Reads the file into a value; an XML document through the library's bounded parse
// (TransXMLInput), whose refusals become InputErrors. The XML platform must be up (a TransSpace alive). Warnings of the
// system-file reader go to `warnings`, one a line.
TransValue loadDocument(std::string const& path, std::ostream& warnings);

}  // namespace cli
