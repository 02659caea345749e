// TransSpace at scale: add, find and list with 100,000 names. Each benchmark reports items per
// second, one item being one operation (add, find) or one listed name (list); the per-operation
// time is the reciprocal.
#include <transspace/transspace.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

constexpr int kNames = 100000;

// Names as a host would use them: mixed case, shuffled, so the map sees no sorted input.
std::vector<TransString> const& names() {
  static std::vector<TransString> const all = [] {
    std::vector<TransString> result;
    result.reserve(kNames);
    for (int i = 0; i < kNames; ++i) result.emplace_back(("Variable_" + std::to_string(i)).c_str());
    std::shuffle(result.begin(), result.end(), std::mt19937(42));
    return result;
  }();
  return all;
}

void fill(TransSpace& space) {
  TransStatus status;
  TransValue const value(1.5);
  for (TransString const& name : names()) space.add(name, value, status);
}

// One iteration adds all names to a fresh space; making and destroying the space is not timed.
void BM_Add(benchmark::State& state) {
  TransValue const value(TransString("a text value"));
  for (auto _ : state) {
    state.PauseTiming();
    auto* space = new TransSpace();
    state.ResumeTiming();
    TransStatus status;
    for (TransString const& name : names()) benchmark::DoNotOptimize(space->add(name, value, status));
    state.PauseTiming();
    delete space;
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kNames);
}
BENCHMARK(BM_Add)->Unit(benchmark::kMillisecond);

// One iteration finds the names `prefix`0 .. `prefix`99999 in a space of 100,000 names.
void findAll(benchmark::State& state, char const* prefix) {
  TransSpace space;
  fill(space);
  std::vector<TransString> sought;
  for (int i = 0; i < kNames; ++i) sought.emplace_back((prefix + std::to_string(i)).c_str());
  for (auto _ : state) {
    TransStatus status;
    for (TransString const& name : sought) benchmark::DoNotOptimize(&space.find(name, status));
  }
  state.SetItemsProcessed(state.iterations() * kNames);
}

// Finds every name of the space, in another letter case than it was added in.
void BM_Find(benchmark::State& state) { findAll(state, "VARIABLE_"); }
BENCHMARK(BM_Find)->Unit(benchmark::kMillisecond);

// Lookups of names that are not there (the failure path).
void BM_FindAbsent(benchmark::State& state) { findAll(state, "Missing_"); }
BENCHMARK(BM_FindAbsent)->Unit(benchmark::kMillisecond);

// One list() of a space of 100,000 names, released again.
void BM_List(benchmark::State& state) {
  TransSpace space;
  fill(space);
  for (auto _ : state) {
    TransStatus status;
    TransStringList* list = space.list(status);
    benchmark::DoNotOptimize(list);
    TransSpace::releaseStringList(list);
  }
  state.SetItemsProcessed(state.iterations() * kNames);
}
BENCHMARK(BM_List)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
