// Queries on the dictionary of a system file through the library's public C++ API, the road the
// Python module wraps: read the file, make the document value, then ask
// variable[@name='variable_K']/@label from /dictionary for random K and read the answer's text.
// bench/python/run.sh runs this and bench_query.py on the same file and compares them; both count
// queries per CPU second.
//
//   bench_query_road --file=FILE.sav --variables=N [benchmark flags]
#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <string>

#include <transspace/savfile/reader.h>
#include <transspace/transspace.h>
#include <transspace/transvalue.h>
#include <transspace/zorb/datasource.h>

namespace {

std::string file;
int variables = 0;

void QueryLabel(benchmark::State& state) {
  savfile::ReadResult read = savfile::readFile(file);
  TransValue dictionary(*read.dataSource);
  std::mt19937 random(12345);
  std::uniform_int_distribution<int> pick(0, variables - 1);
  TransStatus status;
  TransString* first = dictionary.asString(TransString("/dictionary"), TransString("@rowCount"), status);
  TransSpace::releaseString(first);  // the first query builds the query view, outside the timing
  for (auto _ : state) {
    int const k = pick(random);
    std::string const path = "variable[@name='variable_" + std::to_string(k) + "']/@label";
    TransString* label = dictionary.asString(TransString("/dictionary"), TransString(path.c_str()), status);
    if (status.failure() || label->asMBCS() != "Label of variable number " + std::to_string(k)) {
      state.SkipWithError("wrong answer");
    }
    TransSpace::releaseString(label);
  }
  state.counters["queries_per_s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

}  // namespace

int main(int argc, char** argv) {
  int kept = 1;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--file=", 7) == 0) {
      file = argv[i] + 7;
    } else if (std::strncmp(argv[i], "--variables=", 12) == 0) {
      variables = std::atoi(argv[i] + 12);
    } else {
      argv[kept++] = argv[i];
    }
  }
  argc = kept;
  if (file.empty() || variables <= 0) {
    std::fprintf(stderr, "usage: bench_query_road --file=FILE.sav --variables=N [benchmark flags]\n");
    return 2;
  }
  TransSpace space;  // the XML platform, for the whole run
  benchmark::RegisterBenchmark("QueryLabel", QueryLabel)->Unit(benchmark::kMicrosecond)->MinTime(2.0);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
