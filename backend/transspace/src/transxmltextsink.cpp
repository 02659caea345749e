#include "transconfig.h"

#include "transxmltextsink.h"

#include <algorithm>
#include <ostream>

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

void appendUTF8(char32_t c, std::string& to) {
  if (c < 0x80) {
    to.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    to.push_back(static_cast<char>(0xC0 | (c >> 6)));
    to.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    to.push_back(static_cast<char>(0xE0 | (c >> 12)));
    to.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    to.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    to.push_back(static_cast<char>(0xF0 | (c >> 18)));
    to.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    to.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    to.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

[[noreturn]] void unwritable(char32_t c) {
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
    char32_t c = *value;
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
    if (c >= 0xD800 && c <= 0xDFFF) {
      if (c > 0xDBFF || value[1] < 0xDC00 || value[1] > 0xDFFF) unwritable(c);
      c = 0x10000 + ((c - 0xD800) << 10) + (value[1] - 0xDC00);
      ++value;
    }
    appendUTF8(c, to);
  }
}
