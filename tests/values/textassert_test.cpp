// The assertion of TransTextImpl::asDouble, with its text, function, file and line.
//
// TransString::asUTF16 never reports failure, so the assertion cannot fire through the library's
// own behaviour. This program defines TransString::asUTF16(TransStatus&) itself: the library calls
// the exported function through its PLT, so this definition interposes on the library's (the
// target exports it, ENABLE_EXPORTS) and injects the failure that the assertion guards against.
#include <transspace/transstring.h>
#include "values/transtextimpl.h"
#include "core/transutf16.h"
#include "valuetestsupport.h"

#include <gtest/gtest.h>

unsigned short const* TransString::asUTF16(TransStatus& status) const {
  static char16_t const twelve[] = u"12";
  status.reset();
  status.failure(true);
  return TransUTF16::exported(twelve);
}

namespace {

TEST(TransTextImplDeathTest, AsDoubleAssertsOnAFailedConversion) {
#ifdef TRANSSPACE_SANITIZED
  GTEST_SKIP() << "death tests are skipped in the sanitizer build";
#endif
  std::string const message = valuetest::escapeRegex("backend/transspace/src/values/transtextimpl.cpp:") + "[0-9]+" +
                              valuetest::escapeRegex(
                                  ": virtual double TransTextImpl::asDouble(TransStatus&) const: "
                                  "Assertion `! s.failure()' failed.");
  TransTextImpl const impl{TransString("12")};
  EXPECT_DEATH(
      {
        TransStatus status;
        impl.asDouble(status);
      },
      message);
}

}  // namespace
