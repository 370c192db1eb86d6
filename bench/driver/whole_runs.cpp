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

void FormatScripts(Report& report) {
  constexpr std::uint32_t kSensors = 760;  // give a script of that many lines
  constexpr std::uint32_t kLines = 10000;
  const std::string script = ModelFile{kSensors, "rux"}.Made();
  const std::string formatted = ScratchFolder() + "/formatted.rux";
  std::filesystem::copy_file(script, formatted, std::filesystem::copy_options::overwrite_existing);
  Run({RUX_PROGRAM, "fmt", formatted});
  const auto usage = Race(
      {{{RUX_PROGRAM, "fmt", "--check", formatted}}, {{RUX_PROGRAM, "fmt", "--check", script}, 1}});
  const std::vector<Target> targets = {{Target::kValue, 30e-3}};
  AddTimes(report, {"plain", "fmt, formatted lines", kLines}, usage[0], "", {}, targets);
  AddTimes(report, {"plain", "fmt, other lines", kLines}, usage[1], "", {}, targets);
}

void CompareModels(Report& report) {
  // One sensor more.
  const ModelFile before[] = {{kTargetSize, "meta"}, {kTargetSize, "dtb"}};
  const ModelFile after[] = {{kTargetSize + 1, "meta"}, {kTargetSize + 1, "dtb"}};
  const std::string texts = ScratchFolder() + "/compared";
  const std::string sorted = "dtc -q -s -I dtb -O dts -o ";
  const std::string by_text = sorted + texts + ".1 " + before[1].Made() + " && " + sorted + texts +
                              ".2 " + after[1].Made() + " && diff " + texts + ".1 " + texts + ".2";
  const auto usage = Race(
      {{{RUX_PROGRAM, "diff", before[0].Made(), after[0].Made()}}, {{"sh", "-c", by_text}, 1}});
  AddTimes(report, {"plain", "diff, one sensor more", kTargetSize}, usage[0], "dtc -s and diff",
           usage[1], {{Target::kValue, 50e-3}});
}

void MakeTables(Report& report) {
  const std::string machine = ModelFile{kTargetSize, "meta"}.Made();
  const std::string table = ScratchFolder() + "/table.csv";
  const std::string write =
      std::string(RUX_PROGRAM) + " table --format csv " + machine + " > " + table;
  const auto usage =
      Race({{{"sh", "-c", write}}, {{RUX_PROGRAM, "table", machine, "--check", table}}});
  const std::vector<Target> targets = {{Target::kValue, 100e-3}};
  AddTimes(report, {"plain", "table, as CSV", kTargetSize}, usage[0], "", {}, targets);
  AddTimes(report, {"plain", "table, compared with that", kTargetSize}, usage[1], "", {}, targets);
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
