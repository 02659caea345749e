// TransStatus and TransStatusImpl.
#include <transspace/transstatus.h>
#include "core/transstatusimpl.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

// Builds a status with the given flags, in brace-initialiser order {warning, failure}.
TransStatus make(bool warning, bool failure) {
  TransStatus status;
  status.warning(warning);
  status.failure(failure);
  return status;
}

TransStatusImpl makeImpl(bool warning, bool failure) {
  TransStatusImpl status;
  status.warning(warning);
  status.failure(failure);
  return status;
}

TEST(TransStatusTest, FreshStatusHasNeitherFlag) {
  TransStatus status;
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.warning());
}

TEST(TransStatusTest, HandleHoldsExactlyOnePointer) {
  EXPECT_EQ(sizeof(TransStatus), sizeof(void*));
  EXPECT_FALSE(std::is_polymorphic<TransStatus>::value);
  EXPECT_FALSE(std::is_polymorphic<TransStatusImpl>::value);
  EXPECT_EQ(sizeof(TransStatusImpl), 2u);  // two one-byte flags
}

TEST(TransStatusTest, FailureSetterReturnsThePreviousValue) {
  TransStatus status;
  EXPECT_FALSE(status.failure(true));
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.failure(true));
  EXPECT_TRUE(status.failure(false));
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.failure(false));
}

TEST(TransStatusTest, WarningSetterReturnsThePreviousValue) {
  TransStatus status;
  EXPECT_FALSE(status.warning(true));
  EXPECT_TRUE(status.warning());
  EXPECT_TRUE(status.warning(true));
  EXPECT_TRUE(status.warning(false));
  EXPECT_FALSE(status.warning());
}

TEST(TransStatusTest, FlagsAreIndependent) {
  TransStatus status;
  status.failure(true);
  EXPECT_FALSE(status.warning());
  status.reset();
  status.warning(true);
  EXPECT_FALSE(status.failure());
}

TEST(TransStatusTest, ResetClearsBothFlagsWhateverTheyWere) {
  for (bool warning : {false, true}) {
    for (bool failure : {false, true}) {
      TransStatus status = make(warning, failure);
      status.reset();
      EXPECT_FALSE(status.failure()) << warning << failure;
      EXPECT_FALSE(status.warning()) << warning << failure;
    }
  }
}

TEST(TransStatusTest, CopyIsIndependentOfItsSource) {
  TransStatus source = make(true, false);
  TransStatus copy(source);
  EXPECT_TRUE(copy.warning());
  EXPECT_FALSE(copy.failure());
  copy.failure(true);
  copy.warning(false);
  EXPECT_TRUE(source.warning());
  EXPECT_FALSE(source.failure());
  // And the other way round.
  source.reset();
  EXPECT_TRUE(copy.failure());
}

TEST(TransStatusTest, AssignmentCopiesTheFlags) {
  TransStatus source = make(false, true);
  TransStatus target = make(true, false);
  target = source;
  EXPECT_TRUE(target.failure());
  EXPECT_FALSE(target.warning());
  target.reset();
  EXPECT_TRUE(source.failure());
  target = target;  // self-assignment through copy-and-swap keeps the flags
  EXPECT_FALSE(target.failure());
}

TEST(TransStatusTest, SwapExchangesTheRecords) {
  TransStatus a = make(true, false);
  TransStatus b = make(false, true);
  a.swap(b);
  EXPECT_FALSE(a.warning());
  EXPECT_TRUE(a.failure());
  EXPECT_TRUE(b.warning());
  EXPECT_FALSE(b.failure());
}

// The conjunctive ordering: {warning false, failure false} < {true, true} is the only true pair.
TEST(TransStatusTest, OrderingIsConjunctive) {
  EXPECT_TRUE(make(false, false) < make(true, true));
  EXPECT_FALSE(make(false, false) < make(true, false));  // warning only
  EXPECT_FALSE(make(false, false) < make(false, true));  // failure only
  EXPECT_FALSE(make(true, true) < make(false, false));
}

TEST(TransStatusTest, OrderingOfAllSixteenPairs) {
  for (int left = 0; left < 4; ++left) {
    for (int right = 0; right < 4; ++right) {
      bool const leftWarning = left & 1, leftFailure = left & 2;
      bool const rightWarning = right & 1, rightFailure = right & 2;
      bool const expected = !leftWarning && !leftFailure && rightWarning && rightFailure;
      EXPECT_EQ(make(leftWarning, leftFailure) < make(rightWarning, rightFailure), expected)
          << "{" << leftWarning << "," << leftFailure << "} < {" << rightWarning << "," << rightFailure << "}";
      EXPECT_EQ(makeImpl(leftWarning, leftFailure) < makeImpl(rightWarning, rightFailure), expected)
          << "Impl {" << leftWarning << "," << leftFailure << "} < {" << rightWarning << "," << rightFailure << "}";
    }
  }
}

TEST(TransStatusTest, RecordIsNeverLessThanItself) {
  for (bool warning : {false, true}) {
    for (bool failure : {false, true}) {
      TransStatus status = make(warning, failure);
      EXPECT_FALSE(status < status);
      TransStatusImpl impl = makeImpl(warning, failure);
      EXPECT_FALSE(impl < impl);
    }
  }
}

TEST(TransStatusImplTest, SameBehaviourAsTheHandle) {
  TransStatusImpl status;
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(status.failure(true));
  EXPECT_TRUE(status.failure(true));
  EXPECT_FALSE(status.warning(true));
  TransStatusImpl copy(status);
  copy.reset();
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(copy.failure());
  EXPECT_FALSE(copy.warning());
  copy.swap(status);
  EXPECT_TRUE(copy.failure());
  EXPECT_FALSE(status.failure());
  status = copy;
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
}

}  // namespace
