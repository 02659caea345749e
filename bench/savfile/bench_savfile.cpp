// Reads generated system files of 10,000 and 100,000 variables, each with a long name, a label,
// two value labels, a missing value and display parameters; and reads and exports them: the
// dictionary document value of the library, serialised to XML text (what `transspace dict` does).
//   bench_savfile                   runs the benchmarks
//   bench_savfile --write N FILE    writes the N-variable file (to time other readers on it)
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <fstream>

#include <transspace/savfile/reader.h>
#include "savfilebuilder.h"
#include <transspace/transspace.h>
#include <transspace/transvalue.h>
#include <transspace/zorb/datasource.h>

namespace {

std::string generate(int variables) {
  savfiletest::SavFileBuilder b;
  b.caseCount = 0;
  std::string longNames, params;
  for (int i = 0; i < variables; ++i) {
    char shortName[16];
    std::snprintf(shortName, sizeof shortName, "V%07d", i);
    std::string label = "Label of variable number " + std::to_string(i);
    b.numeric(shortName, &label, 1, {-9.0}, savfiletest::SavFileBuilder::format(5, 8, 2));
    b.valueLabels({{b.f64(1), "yes"}, {b.f64(2), "no"}}, {b.records()});
    longNames += (i ? "\t" : "") + std::string(shortName) + "=variable_" + std::to_string(i);
    params += b.i32(1) + b.i32(8) + b.i32(1);
  }
  b.extension(3, 4, 8, b.i32(27) + b.i32(0) + b.i32(0) + b.i32(-1) + b.i32(1) + b.i32(1) + b.i32(2) + b.i32(65001));
  b.extension(11, 4, 3 * variables, params);
  b.text(13, longNames);
  b.text(20, "UTF-8");
  std::string bytes = b.build();
  // No cases follow: the reader only reads the dictionary.
  return bytes;
}

void readDictionary(benchmark::State& state) {
  std::string bytes = generate(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    savfile::MemoryByteSource source(bytes);
    savfile::ReadResult r = savfile::read(source, "generated.sav");
    benchmark::DoNotOptimize(r.dataSource->ColumnCount());
  }
  state.counters["bytes"] = static_cast<double>(bytes.size());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(readDictionary)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void readAndExportDictionary(benchmark::State& state) {
  std::string bytes = generate(static_cast<int>(state.range(0)));
  TransSpace space;  // the XML platform
  for (auto _ : state) {
    savfile::MemoryByteSource source(bytes);
    savfile::ReadResult r = savfile::read(source, "generated.sav");
    TransValue dictionary(*r.dataSource);
    TransString* xml = dictionary.asMBCSXML();
    benchmark::DoNotOptimize(xml->asMBCS());
    TransSpace::releaseString(xml);
  }
  state.counters["bytes"] = static_cast<double>(bytes.size());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(readAndExportDictionary)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::strcmp(argv[1], "--write") == 0) {
    std::ofstream(argv[3], std::ios::binary) << generate(std::atoi(argv[2]));
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
