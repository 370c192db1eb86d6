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

// One row of each quantity that was compared: on a busy machine the processor's time is the one to
// trust, on a quiet one the clock says more.
void AddTimes(Report& report, const std::string& job, std::uint32_t size, const Usage& ours,
              const std::string& peer, const Usage& theirs, const std::vector<Target>& targets) {
  report.Add({job, size, Unit::kSeconds, ours.wall, peer, theirs.wall, targets});
  report.Add(
      {job + ", cpu", size, Unit::kSeconds, ours.processor, peer, theirs.processor, targets});
}

void AddMemory(Report& report, const std::string& job, std::uint32_t size, const Usage& ours) {
  report.Add({job + ", memory", size, Unit::kBytes, ours.memory, "", 0, {kStraight}});
}

struct Peers {
  const Usage& dtc;
  const Usage& flatc;
  const Usage& floor;
};

// The ratios aimed at are those of plain compiling times `factor`.
void AddRows(Report& report, const std::string& job, std::uint32_t size, double factor,
             const Usage& ours, const Peers& peers) {
  AddTimes(report, job, size, ours, "dtc", peers.dtc, AtTargetSize(size, 0.2 * factor));
  AddTimes(report, job, size, ours, "flatc", peers.flatc, AtTargetSize(size, 2 * factor));
  AddTimes(report, job, size, ours, "floor", peers.floor, {kStraight});
  const auto add_memory = [&](const char* peer, const Usage& theirs, std::vector<Target> targets) {
    report.Add({job + ", memory", size, Unit::kBytes, ours.memory, peer, theirs.memory, targets});
  };
  add_memory("dtc", peers.dtc, AtTargetSize(size, factor));
  add_memory("flatc", peers.flatc, {});
  add_memory("floor", peers.floor, {});
}

// What reading the script and writing files of the same size takes with plain calls.
Command Floor(const ModelFile& script, std::uintmax_t bytes) {
  return {RUX_FLOOR, script.Path(), ScratchFolder() + "/floor.meta", std::to_string(bytes)};
}

void CompileMachine(Report& report, std::uint32_t size, Richness richness) {
  const std::string kind = richness == Richness::kRich ? ", rich" : "";
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
  AddRows(report, "compile" + kind, size, 1, usage[0], {usage[2], usage[3], usage[4]});
  AddRows(report, "compile -g" + kind, size, kWithDebugMeta, usage[1],
          {usage[2], usage[3], usage[5]});
  AddTimes(report, "compile -g" + kind, size, usage[1], "compile", usage[0], {});
}

}  // namespace

void CompileMachines(Report& report, std::uint32_t most) {
  for (std::uint32_t size = 1000; size <= most; size *= 10) {
    CompileMachine(report, size, Richness::kPlain);
  }
  CompileMachine(report, kTargetSize, Richness::kRich);
}

void CompileShapes(Report& report) {
  for (const Shape& shape : Shapes()) {
    std::vector<Runner> runners;
    for (const std::uint32_t count : {shape.count / 10, shape.count}) {
      const std::string folder = ScratchFolder() + '/' + shape.name + std::to_string(count);
      std::filesystem::create_directories(folder);
      Run({RUX_GENERATOR, shape.name, std::to_string(count), folder});
      const Command compile = {RUX_PROGRAM, "compile", folder + "/main.rux"};
      runners.push_back({compile, shape.verdict == Verdict::kRefused ? 1 : 0});
    }
    const auto usage = Race(runners);
    AddTimes(report, shape.what, shape.count / 10, usage[0], "", {}, {kStraight});
    AddTimes(report, shape.what, shape.count, usage[1], "", {}, {kStraight});
    AddMemory(report, shape.what, shape.count / 10, usage[0]);
    AddMemory(report, shape.what, shape.count, usage[1]);
  }
}

void AskAndStart(Report& report) {
  for (const std::uint32_t size : {1000u, kTargetSize}) {
    const KnownSensor sensor = SensorsOf(size)[size / 2];
    const std::string path = "SENSOR/" + sensor.name + "/ID";
    const auto usage = Race({{{RUX_PROGRAM, "get", ModelFile{size, "meta"}.Made(), path}},
                             {{"fdtget", ModelFile{size, "dtb"}.Made(), sensor.path, "id"}}});
    AddTimes(report, "get one value", size, usage[0], "fdtget", usage[1], AtTargetSize(size, 3));
  }
  const auto usage = Race({{{RUX_PROGRAM, "--version"}}, {{RUX_EMPTY}}});
  AddTimes(report, "start", 1, usage[0], "empty", usage[1], {});
  const Usage over{usage[0].wall - usage[1].wall, usage[0].processor - usage[1].processor, 0};
  AddTimes(report, "start, over an empty program", 1, over, "", {}, {{Target::kValue, 2e-3}});
}
