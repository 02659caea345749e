// Shared helpers of the query tests: the three roads a query can take (the path index over the
// source-tree mirror, the mirror alone, the Xalan wrapper), and the three accessors read back as
// UTF-8 with their flags.
#pragma once

#include "domtest.h"

#include "document/transdomimpl.h"
#include "core/transutil.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace xpathtest {

using QueryPath = TransDOMImpl::QueryPath;

// A test that runs once per road (instantiate it with XPATHTEST_ON_EVERY_ROAD).
class RoadTest : public domtest::DomTest, public ::testing::WithParamInterface<QueryPath> {
protected:
  // Takes `value` and sends its queries down this test's road.
  std::unique_ptr<TransDOMImpl> onRoad(TransDOMImpl* value) const {
    value->queryPath(GetParam());
    return std::unique_ptr<TransDOMImpl>(value);
  }
  // After the queries of a test on a road other than the wrapper, the mirror must have answered.
  void expectRoad(TransDOMImpl const& value) const {
    EXPECT_EQ(value.queriedOnMirror(), GetParam() != QueryPath::wrapper);
  }
};

inline std::string roadName(::testing::TestParamInfo<QueryPath> const& info) {
  switch (info.param) {
    case QueryPath::automatic: return "Indexed";
    case QueryPath::sourceTree: return "Mirror";
    case QueryPath::wrapper: return "Wrapper";
  }
  return "Unknown";
}

#define XPATHTEST_ON_EVERY_ROAD(Suite)                                                                          \
  INSTANTIATE_TEST_SUITE_P(AllRoads, Suite,                                                                     \
                           ::testing::Values(xpathtest::QueryPath::automatic, xpathtest::QueryPath::sourceTree, \
                                             xpathtest::QueryPath::wrapper),                                    \
                           xpathtest::roadName)

struct Flags {
  bool failure;
  bool warning;
};

inline void expectFlags(TransStatus const& status, Flags expected, char const* what) {
  EXPECT_EQ(status.failure(), expected.failure) << what;
  EXPECT_EQ(status.warning(), expected.warning) << what;
}

inline std::string askString(TransValueImpl const& value, std::string const& context, std::string const& path,
                             TransStatus& status) {
  return domtest::take(value.asString(domtest::ts(context), domtest::ts(path), status));
}

inline std::vector<std::string> askList(TransValueImpl const& value, std::string const& context,
                                        std::string const& path, TransStatus& status) {
  return domtest::take(value.asStringList(domtest::ts(context), domtest::ts(path), status));
}

inline double askNumber(TransValueImpl const& value, std::string const& context, std::string const& path,
                        TransStatus& status) {
  return value.asDouble(domtest::ts(context), domtest::ts(path), status);
}

// Failure (and warning) from all three accessors, with their placeholders.
inline void expectNothingSelected(TransValueImpl const& value, std::string const& context, std::string const& path) {
  TransStatus status;
  EXPECT_EQ(askString(value, context, path, status), "") << context << ", " << path;
  expectFlags(status, {true, true}, "asString");
  EXPECT_EQ(askNumber(value, context, path, status), TransUtil::noNumber) << context << ", " << path;
  expectFlags(status, {true, true}, "asDouble");
  EXPECT_TRUE(askList(value, context, path, status).empty()) << context << ", " << path;
  expectFlags(status, {true, true}, "asStringList");
}

// One answer, the same from all three accessors and without a flag.
inline void expectOneAnswer(TransValueImpl const& value, std::string const& context, std::string const& path,
                            std::string const& text, double number) {
  TransStatus status;
  EXPECT_EQ(askString(value, context, path, status), text) << context << ", " << path;
  expectFlags(status, {false, false}, "asString");
  EXPECT_EQ(askNumber(value, context, path, status), number) << context << ", " << path;
  expectFlags(status, {false, false}, "asDouble");
  EXPECT_EQ(askList(value, context, path, status), std::vector<std::string>{text}) << context << ", " << path;
  expectFlags(status, {false, false}, "asStringList");
}

}  // namespace xpathtest
