#include "bench/driver/race.h"

#include <algorithm>
#include <chrono>

namespace {

constexpr int kLeastRounds = 5;
constexpr int kMostRounds = 101;
constexpr std::chrono::seconds kLongEnough{3};

double Median(const std::vector<Usage>& runs, double Usage::*quantity) {
  std::vector<double> values;
  for (const Usage& run : runs) values.push_back(run.*quantity);
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

std::vector<Usage> Race(const std::vector<Runner>& runners) {
  std::vector<std::vector<Usage>> runs(runners.size());
  const auto start = std::chrono::steady_clock::now();
  for (int round = 0; round < kMostRounds; ++round) {
    if (round >= kLeastRounds && std::chrono::steady_clock::now() - start > kLongEnough) break;
    for (std::size_t i = 0; i < runners.size(); ++i) {
      runs[i].push_back(Run(runners[i].command, runners[i].status));
    }
  }
  std::vector<Usage> medians;
  for (const auto& of_runner : runs) {
    medians.push_back({Median(of_runner, &Usage::wall), Median(of_runner, &Usage::processor),
                       Median(of_runner, &Usage::memory), Median(of_runner, &Usage::faults)});
  }
  return medians;
}
