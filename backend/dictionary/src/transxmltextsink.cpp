#include "core/transconfig.h"

#include "transxmltextsink.h"

#include <algorithm>
#include <ostream>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace {

constexpr std::size_t kChunk = 1 << 16;

// Names of elements and attributes are the vocabulary's ASCII words.
bool nameBefore(XMLCh const* a, XMLCh const* b) {
  while (*a != 0 && *a == *b) {
    ++a;
    ++b;
  }
  return *a < *b;
}

void appendUTF8(UChar32 c, std::string& to) {
  char bytes[U8_MAX_LENGTH];
  int32_t length = 0;
  U8_APPEND_UNSAFE(bytes, length, c);
  to.append(bytes, static_cast<std::size_t>(length));
}

[[noreturn]] void unwritable(UChar32 c) {
  static char const digits[] = "0123456789ABCDEF";
  std::string code = "U+";
  for (int shift = 12; shift >= 0; shift -= 4) code.push_back(digits[(c >> shift) & 0xF]);
  throw TransDictionaryWriter::Unwritable("the dictionary holds the character " + code +
                                          ", which XML 1.0 cannot carry");
}

}  // namespace

TransXMLTextSink::TransXMLTextSink(std::ostream& out, Layout layout) : out_(out), pretty_(layout == Layout::pretty) {
  text_.reserve(kChunk + 4096);
}

void TransXMLTextSink::declaration() {
  text_ += "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>";
  if (pretty_) text_ += '\n';
}

void TransXMLTextSink::startElement(XMLCh const* tag) {
  if (startTagOpen_) closeStartTag();
  if (pretty_ && !open_.empty()) lineBreak(open_.size(), open_.size() == 1);
  text_ += '<';
  appendName(tag);
  open_.push_back(tag);
  startTagOpen_ = true;
}

void TransXMLTextSink::attribute(XMLCh const* name, XMLCh const* value) {
  std::size_t const begin = values_.size();
  appendEscaped(value, values_);
  attributes_.push_back({name, begin, values_.size()});
}

void TransXMLTextSink::endElement() {
  XMLCh const* tag = open_.back();
  open_.pop_back();
  if (startTagOpen_) {
    closeStartTag();
    text_.insert(text_.size() - 1, 1, '/');  // the empty-element form: "/>"
  } else {
    if (pretty_) lineBreak(open_.size(), open_.empty());
    text_ += "</";
    appendName(tag);
    text_ += '>';
  }
  if (open_.empty() && pretty_) text_ += '\n';
  if (text_.size() >= kChunk) flush();
}

void TransXMLTextSink::flush() {
  out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
  text_.clear();
}

// Writes the pending attributes in the order of their names and ends the start tag with ">".
void TransXMLTextSink::closeStartTag() {
  std::stable_sort(attributes_.begin(), attributes_.end(),
                   [](PendingAttribute const& a, PendingAttribute const& b) { return nameBefore(a.name, b.name); });
  for (PendingAttribute const& attribute : attributes_) {
    text_ += ' ';
    appendName(attribute.name);
    text_ += "=\"";
    text_.append(values_, attribute.begin, attribute.end - attribute.begin);
    text_ += '"';
  }
  text_ += '>';
  attributes_.clear();
  values_.clear();
  startTagOpen_ = false;
}

// The pretty layout's break before a tag at `depth` (the root is at 0). The start tags of the
// root's children and the root's end tag stand after a blank line.
void TransXMLTextSink::lineBreak(std::size_t depth, bool blankLine) {
  text_ += '\n';
  if (blankLine) text_ += '\n';
  text_.append(2 * depth, ' ');
}

void TransXMLTextSink::appendName(XMLCh const* name) {
  for (; *name != 0; ++name) text_.push_back(static_cast<char>(*name));
}

void TransXMLTextSink::appendEscaped(XMLCh const* value, std::string& to) {
  for (; *value != 0; ++value) {
    UChar32 c = *value;
    switch (c) {
      case '&': to += "&amp;"; continue;
      case '<': to += "&lt;"; continue;
      case '"': to += "&quot;"; continue;
      case '\t': to += "&#x9;"; continue;
      case '\n': to += "&#xA;"; continue;
      case '\r': to += "&#xD;"; continue;
      default: break;
    }
    if (c < 0x20 || c == 0xFFFE || c == 0xFFFF) unwritable(c);
    if (U16_IS_SURROGATE(c)) {
      if (!U16_IS_SURROGATE_LEAD(c) || !U16_IS_TRAIL(value[1])) unwritable(c);
      c = U16_GET_SUPPLEMENTARY(c, value[1]);
      ++value;
    }
    appendUTF8(c, to);
  }
}
