// What every benchmark here has in common: its name, its sizes, and what it asks for.
#ifndef BENCH_MICRO_MEASURE_H_
#define BENCH_MICRO_MEASURE_H_

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

constexpr std::int64_t kMostSensors = 100000;

// Measures `body`, which has the size from Sensors(state), with machines of 100 to `most` sensors.
// The name is JOB/WHO: the driver sets those who did the same job side by side.
inline void Measure(const char* name, void (*body)(benchmark::State&),
                    std::int64_t most = kMostSensors) {
  benchmark::RegisterBenchmark(name, body)->RangeMultiplier(10)->Range(100, most)->Complexity();
}

// What main returns, with the options of Google Benchmark.
inline int RunMeasurements(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

inline std::uint32_t Sensors(benchmark::State& state) {
  state.SetComplexityN(state.range(0));
  return static_cast<std::uint32_t>(state.range(0));
}

// What is asked for, in an order that nobody can foresee: the same 1,024 picks on every run, made
// by `pick` of numbers below `size`.
template <typename Pick>
auto RandomPicks(std::uint32_t size, Pick pick) {
  std::mt19937 random(size);
  std::vector<decltype(pick(0u))> picks;
  for (int i = 0; i < 1024; ++i) picks.push_back(pick(static_cast<std::uint32_t>(random() % size)));
  return picks;
}

// Calls `ask` with one pick after the other, round and round, as often as the measuring takes.
template <typename Picks, typename Ask>
void AskInTurn(benchmark::State& state, const Picks& picks, Ask ask) {
  std::size_t next = 0;
  for (auto _ : state) benchmark::DoNotOptimize(ask(picks[next++ % 1024]));
}

#endif  // BENCH_MICRO_MEASURE_H_
