#include "textrecords.h"

#include "textscanner.h"

namespace savfile {

namespace {

std::vector<std::string> splitWords(std::string const& s) {
  std::vector<std::string> words;
  std::size_t i = 0;
  while (i < s.size()) {
    while (i < s.size() && (s[i] == ' ' || s[i] == '\t' || s[i] == '\r')) ++i;
    std::size_t start = i;
    while (i < s.size() && s[i] != ' ' && s[i] != '\t' && s[i] != '\r') ++i;
    if (i > start) words.push_back(s.substr(start, i - start));
  }
  return words;
}

// A counted string of the MR set format: decimal length, one space, that many bytes.
bool countedString(TextScanner& in, std::string& out) {
  while (in.accept(' ')) {
  }
  std::uint32_t n = 0;
  if (!in.number(n)) return false;
  if (!in.accept(' ')) return false;
  return in.take(n, out);
}

bool parseOneMrSet(TextScanner& in, RawMrSet& set, std::string& problem) {
  set.offset = in.offset();
  set.name = in.untilAny("=\n");
  if (!in.accept('=')) return problem = "no '=' after the set name", false;
  if (set.name.empty() || set.name[0] != '$') return problem = "set name does not begin with '$'", false;
  set.kind = in.peek();
  in.skip(1);
  if (set.kind == 'C') {
    if (!in.accept(' ')) return problem = "no space after 'C'", false;
  } else if (set.kind == 'E') {
    std::uint32_t source = 0;
    if (!in.accept(' ') || !in.number(source) || !in.accept(' ')) return problem = "bad label source after 'E'", false;
    if (source != 1 && source != 11) return problem = "label source " + std::to_string(source) + " is not 1 or 11", false;
    set.labelSource = static_cast<int>(source);
  } else if (set.kind != 'D') {
    return problem = std::string("unknown set type '") + set.kind + "'", false;
  }
  if (set.kind != 'C') {
    std::string value;
    if (!countedString(in, value)) return problem = "bad counted value", false;
    set.countedValue = trimmed(value);
  }
  if (!countedString(in, set.label)) return problem = "bad label", false;
  set.variables = splitWords(in.until('\n'));
  return true;
}

// One attribute set; stops after the ')' that is followed by `stop` (or at the end).
std::vector<RawAttribute> attributeSet(TextScanner& in, char stop, Diagnostics& diag) {
  std::vector<RawAttribute> attributes;
  while (!in.atEnd() && in.peek() != stop) {
    std::uint64_t at = in.offset();
    std::string name = in.untilAny("(/\n");
    if (!in.accept('(')) {
      diag.warn(at, "attribute '" + excerpt(name) + "' has no '(': the rest of the attribute set is ignored");
      in.untilAny(stop == '/' ? "/" : "");
      return attributes;
    }
    RawAttribute attribute{trimmed(name, true), {}};
    bool closed = false;
    while (!in.atEnd()) {
      if (in.accept(')')) {
        closed = true;
        break;
      }
      std::uint64_t valueAt = in.offset();
      if (!in.accept('\'')) diag.warn(valueAt, "attribute value of '" + excerpt(attribute.first) + "' does not begin with a quote");
      std::string value = in.until('\n');
      in.accept('\n');
      if (!value.empty() && value.back() == '\'') {
        value.pop_back();
      } else {
        diag.warn(valueAt, "attribute value of '" + excerpt(attribute.first) + "' does not end with a quote");
      }
      attribute.second.push_back(value);
    }
    if (!closed) diag.warn(at, "attribute '" + excerpt(attribute.first) + "' has no closing ')'");
    if (attribute.first.empty()) {
      diag.warn(at, "attribute without a name is ignored");
    } else {
      attributes.push_back(std::move(attribute));
    }
  }
  return attributes;
}

}  // namespace

std::vector<RawVariableSet> parseVariableSets(std::string const& text, std::uint64_t offset, Diagnostics& diag) {
  std::vector<RawVariableSet> sets;
  TextScanner in(text, offset);
  while (!in.atEnd()) {
    std::uint64_t at = in.offset();
    std::string line = in.until('\n');
    in.accept('\n');
    if (trimmed(line, true).empty()) continue;
    std::size_t eq = line.find('=');
    if (eq == std::string::npos) {
      diag.warn(at, "variable set line without '=' is ignored");
      continue;
    }
    RawVariableSet set{trimmed(line.substr(0, eq), true), splitWords(line.substr(eq + 1))};
    if (set.name.empty()) {
      diag.warn(at, "variable set without a name is ignored");
      continue;
    }
    sets.push_back(std::move(set));
  }
  return sets;
}

std::vector<RawMrSet> parseMrSets(std::string const& text, std::uint64_t offset, Diagnostics& diag) {
  std::vector<RawMrSet> sets;
  TextScanner in(text, offset);
  for (;;) {
    while (in.accept('\n') || in.accept('\r')) {
    }
    if (in.atEnd()) break;
    RawMrSet set;
    std::uint64_t at = in.offset();
    std::string problem;
    if (parseOneMrSet(in, set, problem)) {
      sets.push_back(std::move(set));
    } else {
      diag.warn(at, "multiple response set ignored: " + problem);
      in.skipPast('\n');
    }
  }
  return sets;
}

std::vector<std::pair<std::string, std::string>> parseLongNames(std::string const& text, std::uint64_t offset,
                                                                Diagnostics& diag) {
  std::vector<std::pair<std::string, std::string>> names;
  TextScanner in(text, offset);
  while (!in.atEnd()) {
    std::uint64_t at = in.offset();
    std::string item = in.until('\t');
    in.accept('\t');
    if (trimmed(item, true).empty()) continue;  // the trailing tab some writers add
    std::size_t eq = item.find('=');
    if (eq == std::string::npos) {
      diag.warn(at, "long variable name entry without '=' is ignored");
      continue;
    }
    std::string key = trimmed(item.substr(0, eq), true);
    std::string value = trimmed(item.substr(eq + 1), true);
    if (key.empty() || value.empty()) {
      diag.warn(at, "long variable name entry with an empty name is ignored");
      continue;
    }
    names.emplace_back(std::move(key), std::move(value));
  }
  return names;
}

std::vector<RawVeryLongString> parseVeryLongStrings(std::string const& text, std::uint64_t offset,
                                                    Diagnostics& diag) {
  std::vector<RawVeryLongString> strings;
  TextScanner in(text, offset);
  while (!in.atEnd()) {
    std::uint64_t at = in.offset();
    std::string item = in.until('\t');
    in.accept('\t');
    if (trimmed(item, true).empty()) continue;
    std::size_t eq = item.find('=');
    if (eq == std::string::npos) {
      diag.warn(at, "very long string entry without '=' is ignored");
      continue;
    }
    RawVeryLongString entry;
    entry.name = trimmed(item.substr(0, eq), true);
    // Digits up to the NUL (which some writers leave out); release-13 files pad them with zeros.
    std::string digits = trimmed(item.substr(eq + 1), true);
    std::size_t nul = digits.find('\0');
    if (nul != std::string::npos) digits.resize(nul);
    long width = 0;
    bool ok = !digits.empty() && digits.size() <= 9;
    for (std::size_t i = 0; ok && i < digits.size(); ++i) {  // at most 9 digits: no overflow
      char c = digits[i];
      if (c < '0' || c > '9') ok = false;
      width = width * 10 + (c - '0');
    }
    if (!ok || entry.name.empty() || width < 1 || width > 32767) {
      diag.warn(at, "very long string entry '" + item.substr(0, 80) + "' is ignored: bad name or width");
      continue;
    }
    entry.width = static_cast<int>(width);
    strings.push_back(std::move(entry));
  }
  return strings;
}

std::vector<RawAttribute> parseAttributeSet(std::string const& text, std::uint64_t offset, Diagnostics& diag) {
  TextScanner in(text, offset);
  std::vector<RawAttribute> attributes = attributeSet(in, '\0', diag);
  if (!in.atEnd()) diag.warn(in.offset(), "data file attributes: trailing bytes are ignored");
  return attributes;
}

std::vector<RawVariableAttributes> parseVariableAttributes(std::string const& text, std::uint64_t offset,
                                                           Diagnostics& diag) {
  std::vector<RawVariableAttributes> result;
  TextScanner in(text, offset);
  while (!in.atEnd()) {
    std::uint64_t at = in.offset();
    std::string name = in.untilAny(":/");
    if (!in.accept(':')) {
      if (!trimmed(name, true).empty()) diag.warn(at, "variable attributes without ':' after the name are ignored");
      in.accept('/');
      continue;
    }
    RawVariableAttributes entry{trimmed(name, true), attributeSet(in, '/', diag)};
    in.accept('/');
    if (entry.variable.empty()) {
      diag.warn(at, "variable attributes without a variable name are ignored");
      continue;
    }
    result.push_back(std::move(entry));
  }
  return result;
}

}  // namespace savfile
