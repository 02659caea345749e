// Distinct document values are independent: each has its own liaison, wrapper, mirror and
// evaluator, so several threads may each query a value of their own at the same time, on every
// road, including values they made and copied themselves and queries that raise.
#include "xpathtest.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using namespace domtest;
using namespace xpathtest;

namespace {

class ThreadsTest : public RoadTest {};

constexpr int kThreads = 4;
constexpr int kVariables = 60;
constexpr int kRounds = 3;

// Queries `value` and counts every answer that is not the expected one.
int wrongAnswers(TransDOMImpl const& value, int thread) {
  int wrong = 0;
  for (int round = 0; round < kRounds; ++round) {
    for (int k = (thread * 7) % kVariables; k < kVariables; k += 3) {
      TransStatus status;
      std::string const name = "v" + std::to_string(k);
      if (askString(value, "/dictionary/variable[@name='" + name + "']", "@label", status) !=
              "Label " + std::to_string(k) ||
          status.failure() || status.warning()) {
        ++wrong;
      }
      if (askNumber(value, "/dictionary", "count(variable[@name='" + name + "']/preceding-sibling::variable)",
                    status) != k) {
        ++wrong;
      }
      if (askList(value, "/dictionary/variable[" + std::to_string(k + 1) + "]", "@name", status) !=
          std::vector<std::string>{name}) {
        ++wrong;
      }
    }
    // A run-time error renews the value's own evaluator; the value answers on.
    TransStatus status;
    if (!askString(value, "/dictionary", "count(1)", status).empty() || !status.failure()) ++wrong;
  }
  return wrong;
}

TEST_P(ThreadsTest, DistinctValuesQueriedAtOnce) {
  QueryPath const road = GetParam();
  ZORB_DataSource const source = dictionarySource(kVariables);
  // Half the values are made before the threads start, the other half inside them.
  std::vector<std::unique_ptr<TransDOMImpl>> made;
  for (int thread = 0; thread < kThreads; ++thread) made.push_back(onRoad(new TransDOMImpl(source)));
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      TransDOMImpl own(dictionarySource(kVariables));
      own.queryPath(road);
      TransDOMImpl copy(own);  // a copy made in the thread, queried beside its original
      wrong += wrongAnswers(*made[static_cast<std::size_t>(thread)], thread);
      wrong += wrongAnswers(own, thread);
      wrong += wrongAnswers(copy, thread);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong.load(), 0);
  for (auto const& value : made) expectRoad(*value);
}

XPATHTEST_ON_EVERY_ROAD(ThreadsTest);

}  // namespace
