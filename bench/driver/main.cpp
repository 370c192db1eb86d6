// Runs rux and its peers side by side on the same content.
#include <fmt/format.h>

#include <exception>
#include <filesystem>

#include "bench/driver/race.h"
#include "bench/driver/report.h"

namespace {

const std::string kScratch = RUX_SCRATCH;

std::string Model(std::uint32_t size, const char* ending) {
  return fmt::format("{}/machine{}.{}", kScratch, size, ending);
}

void Generate(std::uint32_t size) {
  std::filesystem::create_directories(kScratch);
  const std::string count = std::to_string(size);
  Run({RUX_GENERATOR, "script", count, Model(size, "rux")});
  Run({RUX_GENERATOR, "device-tree", count, Model(size, "dts")});
  Run({RUX_GENERATOR, "json", count, Model(size, "json")});
}

void Compile(Report& report, std::uint32_t size) {
  Generate(size);
  const std::string script = Model(size, "rux"), meta = Model(size, "meta");
  const auto usage = Race({
      {{RUX_PROGRAM, "compile", script, "-o", meta}},
      {{RUX_PROGRAM, "compile", script, "-o", meta, "-g", Model(size, "metad")}},
      {{"dtc", "-q", "-o", Model(size, "dtb"), Model(size, "dts")}, 0, size > 10000},
      {{"flatc", "-b", "-o", kScratch, RUX_SCHEMA, Model(size, "json")}},
  });
  const auto& [ours, debug, dtc, flatc] = std::tie(usage[0], usage[1], usage[2], usage[3]);
  report.Add({"compile", size, Unit::kSeconds, ours.wall, "dtc", dtc.wall, 0.2});
  report.Add({"compile", size, Unit::kSeconds, ours.wall, "flatc", flatc.wall, 2});
  report.Add({"compile -g", size, Unit::kSeconds, debug.wall, "rux", ours.wall, 1.5});
  report.Add({"compile, processor", size, Unit::kSeconds, ours.processor, "dtc", dtc.processor});
  report.Add(
      {"compile, processor", size, Unit::kSeconds, ours.processor, "flatc", flatc.processor});
  report.Add(
      {"compile -g, processor", size, Unit::kSeconds, debug.processor, "rux", ours.processor});
  report.Add({"compile, memory", size, Unit::kBytes, ours.memory, "dtc", dtc.memory, 1});
  report.Add({"compile, memory", size, Unit::kBytes, ours.memory, "flatc", flatc.memory});
  report.Add({"compile -g, memory", size, Unit::kBytes, debug.memory, "rux", ours.memory});
}

}  // namespace

int main() try {
  Report report;
  for (const std::uint32_t size : {1000, 10000}) Compile(report, size);
} catch (const std::exception& error) {
  fmt::print(stderr, "rux_bench: {}\n", error.what());
  return 1;
}
