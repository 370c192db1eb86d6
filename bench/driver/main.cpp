// Runs rux and its peers side by side on the same content: the table of bench/README.md.
//
//   rux_bench [--quick] [--json FILE]
//
//   --quick      machines of up to 10,000 sensors
//   --json FILE  writes the table there as well
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

#include "bench/driver/jobs.h"

namespace {

int Usage() {
  std::fputs("usage: rux_bench [--quick] [--json FILE]\n", stderr);
  return 2;
}

}  // namespace

int main(int argc, char** argv) try {
  bool quick = false;
  std::string json;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--quick") {
      quick = true;
    } else if (argument == "--json" && i + 1 < argc) {
      json = argv[++i];
    } else {
      return Usage();
    }
  }
  // Preloaded into all, so that it costs all the same.
  if (std::filesystem::exists(RUX_PLUGIN)) setenv("LD_PRELOAD", RUX_OWN_READER, 1);
  const std::uint32_t most = quick ? 10000 : 100000;
  Report report;
  CompileMachines(report, most);
  CompileShapes(report);
  FormatScripts(report);
  CompareModels(report);
  MakeTables(report);
  AskAndStart(report);
  MicroBenchmarks(report, most);
  report.Print();
  if (!json.empty()) report.WriteJson(json);
} catch (const std::exception& error) {
  std::fprintf(stderr, "rux_bench: %s\n", error.what());
  return 1;
}
