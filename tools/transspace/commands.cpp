#include "commands.h"

#include <charconv>
#include <cmath>
#include <memory>
#include <new>
#include <ostream>
#include <string>

#include <xalanc/PlatformSupport/XSLException.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>

#include "inputdocument.h"
#include "schematext.h"
#include <transspace/transdictionarywriter.h>
#include <transspace/transowner.h>
#include <transspace/transspace.h>
#include <transspace/transvalue.h>
#include <transspace/transxmlinput.h>
#include <transspace/zorb/datasource.h>

namespace cli {

namespace {

using namespace XERCES_CPP_NAMESPACE;

}  // namespace

// Re-serialises compact XML with indentation (the library's own serialisation has none).
std::string indent(std::string const& xml) {
  std::unique_ptr<DOMDocument> document = TransXMLInput::parseDOM(xml.data(), xml.size());
  DOMImplementation* ls = DOMImplementationRegistry::getDOMImplementation(u"LS");
  std::unique_ptr<DOMLSSerializer, void (*)(DOMLSSerializer*)> serializer(ls->createLSSerializer(),
                                                                          [](DOMLSSerializer* s) { s->release(); });
  serializer->getDomConfig()->setParameter(XMLUni::fgDOMWRTFormatPrettyPrint, true);
  std::unique_ptr<DOMLSOutput, void (*)(DOMLSOutput*)> output(ls->createLSOutput(),
                                                              [](DOMLSOutput* o) { o->release(); });
  MemBufFormatTarget target;
  output->setByteStream(&target);
  output->setEncoding(u"UTF-8");
  serializer->write(document.get(), output.get());
  return std::string(reinterpret_cast<char const*>(target.getRawBuffer()), target.getLen());
}

namespace {

// The dictionary of a system file goes straight from the host model to the output, without the
// document: the same bytes, in a fraction of the time and memory.
int streamDict(Options const& options, std::ostream& out, std::ostream& err) {
  std::shared_ptr<ZORB_DataSource> ds = readSystemFile(options.file, err);
  using Layout = TransDictionaryWriter::Layout;
  try {
    TransDictionaryWriter::write(*ds, out, options.pretty ? Layout::pretty : Layout::compact);
  } catch (TransDictionaryWriter::Unwritable const&) {
    err << "transspace: " << options.file << ": the dictionary could not be serialised\n";
    return NoResult;
  }
  out << '\n';
  return Answered;
}

// `dict` of an XML file: the document value's own serialisation.
int runDict(Options const& options, TransValue const& value, std::ostream& out, std::ostream& err) {
  TransStatus status;
  TransStringOwner const xml(value.asMBCSXML(status));
  if (status.failure()) {
    err << "transspace: " << options.file << ": the dictionary could not be serialised\n";
    return NoResult;
  }
  std::string text = xml->asMBCS();
  out << (options.pretty ? indent(text) : text) << '\n';
  return Answered;
}

// The shortest text that reads back as `number`; infinities and NaN in XPath's notation, as
// --string shows them.
std::string shortestText(double number) {
  if (std::isnan(number)) return "NaN";
  if (std::isinf(number)) return number < 0 ? "-Infinity" : "Infinity";
  char buffer[64];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
  return std::string(buffer, result.ptr);
}

// The status of an answer: failure or an empty answer is "no result"; a warning beside a
// non-empty single answer means the path selected several nodes and the first was taken.
int report(TransStatus const& status, bool empty, bool single, std::ostream& err) {
  if (status.failure()) {
    err << "transspace: no result: the context selected no node, or the path could not be answered\n";
    return NoResult;
  }
  if (empty) {
    err << "transspace: no result: the answer is empty\n";
    return NoResult;
  }
  if (single && status.warning()) err << "transspace: warning: several nodes; the first one is shown\n";
  return Answered;
}

int answerQuery(Options const& options, TransValue const& value, std::ostream& out, std::ostream& err) {
  TransString context(options.context.c_str());
  TransString path(options.path.c_str());
  TransStatus status;
  switch (options.answer) {
    case AnswerForm::List: {
      TransStringListOwner const answer(value.asStringList(context, path, status));
      for (unsigned long i = 0; i < answer->size(); ++i) out << answer->asMBCS(i) << '\n';
      return report(status, answer->empty(), false, err);
    }
    case AnswerForm::String: {
      TransStringOwner const answer(value.asString(context, path, status));
      bool const empty = answer->empty();
      if (!status.failure() && !empty) out << answer->asMBCS() << '\n';
      return report(status, empty, true, err);
    }
    case AnswerForm::Double: {
      double const number = value.asDouble(context, path, status);
      bool const empty = number == TransValue::noNumber;
      if (!status.failure() && !empty) out << shortestText(number) << '\n';
      return report(status, empty, true, err);
    }
  }
  return NoResult;
}

int runQuery(Options const& options, TransValue const& value, std::ostream& out, std::ostream& err) {
  try {
    return answerQuery(options, value, out, err);
  } catch (XALAN_CPP_NAMESPACE::XSLException const& e) {
    // A malformed context is not the library's to report: its XPath exception reaches the caller.
    err << "transspace: invalid XPath: " << toUtf8(e.getMessage().c_str()) << '\n';
    return BadInput;
  }
}

}  // namespace

int run(Options const& options, std::ostream& out, std::ostream& err) {
  if (options.command == Command::Help) {
    out << usageText();
    return Answered;
  }
  if (options.command == Command::Version) {
    out << "transspace " << TRANSSPACE_VERSION << '\n';
    return Answered;
  }
  if (options.command == Command::Schema) {
    out << dictionarySchema();
    return Answered;
  }
  TransSpace space;  // brings the XML platform up for as long as the command runs
  try {
    if (options.command == Command::Dict && sniffInputKind(options.file) == InputKind::SystemFile) {
      return streamDict(options, out, err);
    }
    TransValue value = loadDocument(options.file, err);
    return options.command == Command::Dict ? runDict(options, value, out, err) : runQuery(options, value, out, err);
  } catch (InputError const& e) {
    err << "transspace: " << e.message << '\n';
    return BadInput;
  } catch (TransXMLInputError const& e) {
    // Only the indented output parses again: the library's own text, refused only when too large.
    err << "transspace: " << options.file << ": " << e.what() << '\n';
    return BadInput;
  } catch (std::bad_alloc const&) {
    // The reader's allocations are bounded by the file's size, but a large file may still need
    // more memory than there is: a message and exit status 2, not an abort.
    err << "transspace: " << options.file << ": not enough memory to read it\n";
    return BadInput;
  }
}

}  // namespace cli
