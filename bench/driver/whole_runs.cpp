#include <filesystem>

#include "bench/driver/jobs.h"
#include "bench/driver/race.h"
#include "bench/model/shapes.h"

namespace {

// The size that targets speak of.
constexpr std::uint32_t kTargetSize = 10000;

std::vector<Target> AtTargetSize(std::uint32_t size, double ratio) {
  if (size != kTargetSize) return {};
  return {{Target::kRatio, ratio}};
}

// A debug meta file on top may take half as much again.
constexpr double kWithDebugMeta = 1.5;

struct Peers {
  const Usage& dtc;
  const Usage& flatc;
  const Usage& floor;
};

// Compares what ours took with what each peer took. The ratios aimed at are those of plain
// compiling times `factor`.
void AddRows(Report& report, const std::string& job, std::uint32_t size, double factor,
             const Usage& ours, const Peers& peers) {
  const auto add = [&](const char* quantity, Unit unit, double Usage::*field) {
    const bool memory = unit == Unit::kBytes;
    const auto row = [&](const char* peer, const Usage& theirs, std::vector<Target> targets) {
      report.Add({job + quantity, size, unit, ours.*field, peer, theirs.*field, targets});
    };
    row("dtc", peers.dtc, AtTargetSize(size, (memory ? 1 : 0.2) * factor));
    row("flatc", peers.flatc, memory ? std::vector<Target>{} : AtTargetSize(size, 2 * factor));
    row("floor", peers.floor, memory ? std::vector<Target>{} : std::vector{kStraight});
  };
  add("", Unit::kSeconds, &Usage::wall);
  add(", processor time", Unit::kSeconds, &Usage::processor);
  add(", memory", Unit::kBytes, &Usage::memory);
}

// What reading the script and writing files of the same size takes with plain calls.
Command Floor(const ModelFile& script, std::uintmax_t bytes) {
  return {RUX_FLOOR, script.Path(), ScratchFolder() + "/floor.meta", std::to_string(bytes)};
}

void CompileMachine(Report& report, const std::string& job, std::uint32_t size, Richness richness) {
  const auto file = [&](const char* ending) { return ModelFile{size, ending, richness}; };
  for (const char* generated : {"rux", "dts", "json"}) file(generated).Made();
  const auto meta_size = std::filesystem::file_size(file("meta").Made());
  const auto both_sizes = meta_size + std::filesystem::file_size(file("metad").Made());
  const auto usage = Race({{file("meta").HowToMake()},
                           {file("metad").HowToMake()},
                           {file("dtb").HowToMake(), 0, size > kTargetSize},
                           {file("bin").HowToMake()},
                           {Floor(file("rux"), meta_size)},
                           {Floor(file("rux"), both_sizes)}});
  AddRows(report, job, size, 1, usage[0], {usage[2], usage[3], usage[4]});
  AddRows(report, job + " -g", size, kWithDebugMeta, usage[1], {usage[2], usage[3], usage[5]});
  report.Add({job + " -g", size, Unit::kSeconds, usage[1].wall, "compile", usage[0].wall});
}

}  // namespace

void CompileMachines(Report& report, std::uint32_t most) {
  for (std::uint32_t size = 1000; size <= most; size *= 10) {
    CompileMachine(report, "compile", size, Richness::kPlain);
  }
  CompileMachine(report, "compile, rich model", kTargetSize, Richness::kRich);
}

void CompileShapes(Report& report) {
  for (const Shape& shape : Shapes()) {
    std::vector<Runner> runners;
    for (const std::uint32_t count : {shape.count / 10, shape.count}) {
      const std::string folder = ScratchFolder() + '/' + shape.name + std::to_string(count);
      std::filesystem::create_directories(folder);
      Run({RUX_GENERATOR, shape.name, std::to_string(count), folder});
      const Command compile = {RUX_PROGRAM, "compile", folder + "/main.rux"};
      runners.push_back({compile, shape.accepted ? 0 : 1});
    }
    const auto usage = Race(runners);
    const auto row = [&](std::uint32_t count, const Usage& ours) {
      report.Add({shape.what, count, Unit::kSeconds, ours.wall, "", 0, {kStraight}});
    };
    row(shape.count / 10, usage[0]);
    row(shape.count, usage[1]);
  }
}

void AskAndStart(Report& report) {
  for (const std::uint32_t size : {1000u, kTargetSize}) {
    const KnownSensor sensor = SensorsOf(size)[size / 2];
    const std::string path = "SENSOR/" + sensor.name + "/ID";
    const auto usage = Race({{{RUX_PROGRAM, "get", ModelFile{size, "meta"}.Made(), path}},
                             {{"fdtget", ModelFile{size, "dtb"}.Made(), sensor.path, "id"}}});
    report.Add({"get one value", size, Unit::kSeconds, usage[0].wall, "fdtget", usage[1].wall,
                AtTargetSize(size, 3)});
  }
  const auto usage = Race({{{RUX_PROGRAM, "--version"}}, {{RUX_EMPTY}}});
  report.Add({"start", 1, Unit::kSeconds, usage[0].wall, "empty", usage[1].wall});
  report.Add({"start, over an empty program",
              1,
              Unit::kSeconds,
              usage[0].wall - usage[1].wall,
              "",
              0,
              {{Target::kValue, 2e-3}}});
}
