// Export macro of libtransspace: the library is built with hidden visibility, and only the classes
// marked with TRANS_EXPORT (the handles, TransUtil, the *Impl classes, TransXMLChArray) are visible.
#pragma once

#define TRANS_EXPORT __attribute__((visibility("default")))
