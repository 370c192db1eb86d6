// Making a file ready for questions. gcInit reads ours and takes it apart, the read model maps and
// verifies it; the peers' lie in memory already and are checked from end to end.
#include <libfdt.h>

#include "bench/files/model_files.h"
#include "bench/micro/host.h"
#include "bench/micro/measure.h"
#include "bench/micro/peers.h"
#include "ruxcomp/ruxcomp.h"
#include "ruxmeta.h"

namespace {

void Meta(benchmark::State& state) {
  const std::string path = ModelFile{Sensors(state), "meta"}.Made();
  for (auto _ : state) {
    Require(gcInit(path), "gcInit");
    state.PauseTiming();
    gcUnInit();
    state.ResumeTiming();
  }
}

void OpenModel(benchmark::State& state) {
  const std::string path = ModelFile{Sensors(state), "meta"}.Made();
  for (auto _ : state) {
    auto model = ruxcomp::Model::Open(path);
    Require(model.has_value(), "Model::Open");
    state.PauseTiming();
    model.reset();
    state.ResumeTiming();
  }
}

void OpenModelForC(benchmark::State& state) {
  const std::string path = ModelFile{Sensors(state), "meta"}.Made();
  for (auto _ : state) {
    ruxmeta_model* model = nullptr;
    Require(ruxmeta_open(path.c_str(), &model, nullptr) == RUXMETA_OK, "ruxmeta_open");
    state.PauseTiming();
    ruxmeta_close(model);
    state.ResumeTiming();
  }
}

void MakeModel(benchmark::State& state) {
  LoadMachine(Sensors(state));
  for (auto _ : state) {
    auto model = ruxcomp::Model::OfLoaded();
    benchmark::DoNotOptimize(model);
    state.PauseTiming();
    model = {};
    state.ResumeTiming();
  }
}

void DebugMeta(benchmark::State& state) {
  const std::string path = ModelFile{Sensors(state), "metad"}.Made();
  for (auto _ : state) {
    Require(gdInit(path), "gdInit");
    state.PauseTiming();
    gdUnInit();
    state.ResumeTiming();
  }
}

void CheckTree(benchmark::State& state) {
  const std::string& tree = TreeBytes(Sensors(state));
  for (auto _ : state) Require(fdt_check_full(tree.data(), tree.size()) == 0, "fdt_check_full");
}

void CheckFlat(benchmark::State& state) {
  const std::string& flat = FlatBytes(Sensors(state));
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(flat.data());
  for (auto _ : state) {
    flatbuffers::Verifier verifier(bytes, flat.size(), 64, 100000000);
    Require(bench::flat::VerifyMachineBuffer(verifier), "Verifier");
  }
}

}  // namespace

int main(int argc, char** argv) {
  Measure("load/ours", Meta);
  Measure("load/model", OpenModel);
  Measure("load/c", OpenModelForC);
  Measure("load/libfdt", CheckTree);
  Measure("load/flatbuffers", CheckFlat);
  Measure("model of what is loaded/ours", MakeModel);
  Measure("load debug meta/ours", DebugMeta);
  return RunMeasurements(argc, argv);
}
