// What the fuzz targets of the library share: the XML platform kept up for the whole run, and
// asking a value every view.
#pragma once

#include <string>

#include <transspace/transvalue.h>

namespace fuzz {

// A TransSpace for the life of the process. Xalan reports parse errors of expressions on
// std::cerr; that output is dropped, since the fuzzer feeds it malformed expressions all the time.
void bringPlatformUp();

// Every view of `value` for the query (context, path), and the views of the whole value; each
// returned string and list is given back.
void askEveryView(TransValue const& value, char const* context, char const* path);

// The value's XML text in the multibyte form.
std::string xmlText(TransValue const& value);

}  // namespace fuzz
