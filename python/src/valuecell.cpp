#include "valuecell.h"

#include <utility>

namespace pytrans {

char const* kindName(ValueKind kind) {
  switch (kind) {
    case ValueKind::null: return "null";
    case ValueKind::number: return "number";
    case ValueKind::text: return "text";
    case ValueKind::document: return "document";
  }
  return "unknown";
}

ValueCell::ValueCell(TransValue value, ValueKind kind)
    : platform_(kind == ValueKind::document ? xmlPlatform() : nullptr),
      owned_(new TransValue(std::move(value))),
      value_(owned_.get()),
      kind_(kind) {}

ValueCell::ValueCell(TransValue const* entry, ValueKind kind, XmlPlatform platform)
    : platform_(std::move(platform)), value_(entry), kind_(kind) {}

void ValueCell::readEntry(TransValue const* entry) {
  owned_.reset();
  value_ = entry;
}

void ValueCell::keep(TransValue value) {
  owned_.reset(new TransValue(std::move(value)));
  value_ = owned_.get();
}

}  // namespace pytrans
