// The stages of compiling, each by itself.
#include <fstream>

#include "bench/files/model_files.h"
#include "bench/micro/host.h"
#include "bench/micro/measure.h"
#include "ruxcomp/ruxcomp.h"

namespace {

// The symbol tables outlive a run, and a run that finds its names in them has less to do. Loading a
// file that has none empties them.
void EmptyTables() {
  static const std::string meta = [] {
    const std::string script = ScratchFolder() + "/empty.rux",
                      path = ScratchFolder() + "/empty.meta";
    std::ofstream{script};
    Require(gccCompStart(ScriptPath(script)), "gccCompStart");
    gccParse();
    Require(gccOutput(path), "gccOutput");
    gccCompEnd();
    return path;
  }();
  Require(gcInit(meta), "gcInit");
  gcUnInit();
}

enum Stage { kRead, kCheck, kWrite, kWriteDebug, kEnd };

// Goes through a whole run, with the clock on only in that stage.
template <Stage stage>
void Run(benchmark::State& state) {
  const std::string script = ScriptPath(ModelFile{Sensors(state), "rux"}.Made());
  const std::string meta = ScratchFolder() + "/stage.meta";
  const auto timed = [&state](Stage this_one, auto action) {
    if (stage == this_one) state.ResumeTiming();
    action();
    if (stage == this_one) state.PauseTiming();
  };
  for (auto _ : state) {
    state.PauseTiming();
    EmptyTables();
    timed(kRead, [&] {
      Require(gccCompStart(script), "gccCompStart");
      gccParse();
    });
    timed(kCheck, [] { Require(gccCheck(), "gccCheck"); });
    if (stage == kWrite) timed(kWrite, [&] { Require(gccOutput(meta), "gccOutput"); });
    if (stage == kWriteDebug) timed(kWriteDebug, [&] { Require(gccOutputD(meta), "gccOutputD"); });
    timed(kEnd, gccCompEnd);
    state.ResumeTiming();
  }
}

}  // namespace

int main(int argc, char** argv) {
  Measure("read script/ours", Run<kRead>);
  Measure("check/ours", Run<kCheck>);
  Measure("compile and write/ours", Run<kWrite>);
  Measure("write debug meta/ours", Run<kWriteDebug>);
  Measure("end of run/ours", Run<kEnd>);
  return RunMeasurements(argc, argv);
}
