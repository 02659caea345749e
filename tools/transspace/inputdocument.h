// Turns the FILE of the command line into a document value: a system file into the value of
// its dictionary, anything else into the value of the XML document it holds.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

#include <xercesc/util/XercesDefs.hpp>

#include <transspace/transvalue.h>

class ZORB_DataSource;

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

// Reads a system file's dictionary into the host model. Warnings of the reader go to `warnings`,
// one a line; a file it cannot read throws InputError.
std::shared_ptr<ZORB_DataSource> readSystemFile(std::string const& path, std::ostream& warnings);

// Runs `work`, a command's reading and answering of FILE, and turns what reading can throw (an
// InputError, a refused XML text, memory that ran out) into one line on `err` and exit status 2.
int reportingInputErrors(std::string const& file, std::ostream& err, std::function<int()> const& work);

// Reads the file into a value; an XML document through the library's bounded parse
// (TransXMLInput), whose refusals become InputErrors. The XML platform must be up (a TransSpace
// alive). Warnings of the system-file reader go to `warnings`, one a line.
TransValue loadDocument(std::string const& path, std::ostream& warnings);

}  // namespace cli
