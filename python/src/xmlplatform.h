// The XML platform (Xerces-C, Xalan-C's XPath and source tree) for the module. The library brings
// it up with each TransSpace and down with it; a Python value may outlive every space (a document
// read from a file, a value taken out of a space that is gone), so each space and each value of the
// module holds a share of one TransSpace kept for that purpose, and the platform goes down only
// after the last of them.
#pragma once

#include <memory>

#include <transspace/transspace.h>

namespace pytrans {

using XmlPlatform = std::shared_ptr<TransSpace const>;

// The share of the platform; brings it up when nobody holds one.
XmlPlatform xmlPlatform();

// A space of its own for a Python Space. Making and destroying spaces touches the XML libraries'
// process-wide counts, so both happen under one lock.
std::unique_ptr<TransSpace, void (*)(TransSpace*)> newSpace();

}  // namespace pytrans
