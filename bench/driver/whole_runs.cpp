#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/driver/jobs.h"
#include "bench/driver/race.h"
#include "bench/driver/report.h"
#include "bench/driver/rows.h"
#include "bench/files/model_files.h"
#include "bench/files/process.h"
#include "bench/model/shapes.h"

void CompileShapes(Report& report) {
  const auto add = [&](const Shape& shape, std::uint32_t count, const Usage& usage) {
    AddTimes(report, {"shape", shape.what, count}, usage, "", {}, {kStraight});
    report.Add({"shape",
                std::string(shape.what) + ", memory",
                count,
                Unit::kBytes,
                usage.memory,
                "",
                0,
                {kStraight}});
  };
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
    add(shape, shape.count / 10, usage[0]);
    add(shape, shape.count, usage[1]);
  }
}

void AskAndStart(Report& report) {
  for (const std::uint32_t size : {1000u, kTargetSize}) {
    const KnownSensor sensor = SensorsOf(size)[size / 2];
    const std::string path = "SENSOR/" + sensor.name + "/ID";
    const auto usage = Race({{{RUX_PROGRAM, "get", ModelFile{size, "meta"}.Made(), path}},
                             {{"fdtget", ModelFile{size, "dtb"}.Made(), sensor.path, "id"}}});
    const auto targets =
        size == kTargetSize ? std::vector<Target>{{Target::kRatio, 3}} : std::vector<Target>{};
    AddTimes(report, {"plain", "get one value", size}, usage[0], "fdtget", usage[1], targets);
  }
  const auto usage = Race({{{RUX_PROGRAM, "--version"}}, {{RUX_EMPTY}}});
  AddTimes(report, {"-", "start", 1}, usage[0], "empty", usage[1], {});
  const Usage over{usage[0].wall - usage[1].wall, usage[0].processor - usage[1].processor, 0, 0};
  AddTimes(report, {"-", "start, over an empty program", 1}, over, "", {},
           {{Target::kValue, 2e-3}});
}
