#include "fuzzsupport.h"

#include <iostream>

#include <transspace/transspace.h>

namespace fuzz {

// Never destroyed, so the platform stays up; a global, so that the leak checker finds it reachable.
TransSpace* keptSpace = nullptr;

void bringPlatformUp() {
  if (keptSpace == nullptr) keptSpace = new TransSpace();
  std::cerr.rdbuf(nullptr);
}

void askEveryView(TransValue const& value, char const* context, char const* path) {
  TransString const contextText(context);
  TransString const pathText(path);
  TransStatus status;
  TransString* text = value.asString(contextText, pathText, status);
  text->asUTF16(status);
  TransValue::releaseString(text);
  TransStringList* list = value.asStringList(contextText, pathText, status);
  for (unsigned long i = 0; i < list->size(); ++i) list->asMBCS(i, status);
  TransValue::releaseStringList(list);
  value.asDouble(contextText, pathText, status);
  value.asDouble(status);
  TransString* whole = value.asString(status);
  TransValue::releaseString(whole);
  TransString* utf16 = value.asUTF16XML(status);
  TransValue::releaseString(utf16);
  value.asXalanDocument(status);
}

std::string xmlText(TransValue const& value) {
  TransStatus status;
  TransString* xml = value.asMBCSXML(status);
  std::string const text = xml->asMBCS(status);
  TransValue::releaseString(xml);
  return text;
}

}  // namespace fuzz
