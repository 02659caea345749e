// addDictionary at scale. Each variable has a label, print and write formats, a missing value and
// three value labels; every variable has one attribute, every tenth variable starts a plain set of
// ten, every fiftieth a multiple response set of five; the data source has attributes and two
// extension records. Run: dictionary_bench [--benchmark_filter=...]; the program prints the ratio
// time(100,000) / time(10,000) after the table (linear placement means about 10).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "dictionary/transdictionaryimpl.h"
#include <transspace/zorb/datasourcebuilder.h>
#include <transspace/zorb/platform.h>

namespace {

ZORB_DataSource makeDataSource(int variables) {
  zorb::DataSourceBuilder b;
  b.timestamp(1795241020.0).rowCount(1000);
  for (int i = 0; i < variables; ++i) {
    std::string name = "v" + std::to_string(i);
    b.addVariable(name)
        .label("Question " + std::to_string(i) + " of the survey")
        .printFormat(5, 8, 2)
        .writeFormat(5, 10, 3)
        .measurementLevel(1 + i % 3)
        .missingValues({-9})
        .valueLabel(1, "Agree")
        .valueLabel(2, "Neutral")
        .valueLabel(3, "Disagree")
        .attribute(i % 2 == 0 ? "$role" : "note", {"input"});
  }
  b.weightVariable(variables / 2);
  for (int i = 0; i + 10 <= variables; i += 10) {
    std::vector<std::string> members;
    for (int k = 0; k < 10; ++k) members.push_back("v" + std::to_string(i + k));
    b.variableSet("set" + std::to_string(i), members);
  }
  for (int i = 0; i + 5 <= variables; i += 50) {
    std::vector<std::string> members;
    for (int k = 0; k < 5; ++k) members.push_back("v" + std::to_string(i + k));
    b.dichotomySet("$mr" + std::to_string(i), "Multiple response " + std::to_string(i), "1", true, members);
  }
  b.attribute("$dataset", {"benchmark"}).attribute("origin", {"generated", "synthetic"});
  b.extension(3, 4, std::string(32, '\x01'));
  b.extension(4, 8, std::string(64, '\x02'));
  return b.build();
}

ZORB_DataSource const& dataSource(int variables) {
  static std::map<int, ZORB_DataSource> cache;
  auto found = cache.find(variables);
  if (found == cache.end()) found = cache.emplace(variables, makeDataSource(variables)).first;
  return found->second;
}

void buildDictionary(benchmark::State& state, bool literal) {
  ZORB_DataSource const& ds = dataSource(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    TransDictionaryImpl builder;
    builder.setLiteralPlacement(literal);
    XERCES_CPP_NAMESPACE::DOMDocument* document = builder.addDictionary(ds);
    benchmark::DoNotOptimize(document);
    state.PauseTiming();  // releasing the document is the caller's business, not the builder's
    document->release();
    state.ResumeTiming();
  }
  state.counters["variables"] = static_cast<double>(state.range(0));
  state.counters["us_per_variable"] =
      benchmark::Counter(static_cast<double>(state.range(0)) * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_AddDictionary(benchmark::State& state) { buildDictionary(state, false); }
void BM_AddDictionaryLiteralPlacement(benchmark::State& state) { buildDictionary(state, true); }

BENCHMARK(BM_AddDictionary)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_AddDictionaryLiteralPlacement)->Arg(1000)->Arg(3000)->Unit(benchmark::kMillisecond);

// Collects the mean real time per size of BM_AddDictionary, to print the ratio.
class RatioReporter : public benchmark::ConsoleReporter {
public:
  void ReportRuns(std::vector<Run> const& runs) override {
    for (Run const& run : runs) {
      std::string name = run.benchmark_name();
      if (name.rfind("BM_AddDictionary/", 0) == 0 && !run.error_occurred) {
        times[name.substr(std::string("BM_AddDictionary/").size(), std::string::npos)] = run.GetAdjustedRealTime();
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, double> times;
};

}  // namespace

int main(int argc, char** argv) {
  XERCES_CPP_NAMESPACE::XMLPlatformUtils::Initialize();
  zorb::SetServerLocaleResolver([](std::string&, std::vector<std::string>& list) {
    list.assign({"en_US"});
    return 1;
  });
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  auto key = [&reporter](char const* size) {
    for (auto const& entry : reporter.times) {
      if (entry.first.rfind(size, 0) == 0) return entry.second;
    }
    return 0.0;
  };
  double t10k = key("10000/"), t100k = key("100000/");
  if (t10k > 0 && t100k > 0) std::printf("ratio time(100,000) / time(10,000) = %.2f\n", t100k / t10k);
  benchmark::Shutdown();
  XERCES_CPP_NAMESPACE::XMLPlatformUtils::Terminate();
  return 0;
}
