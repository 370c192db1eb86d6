#include "bench/driver/report.h"

#include <fmt/format.h>

#include <cmath>
#include <fstream>
#include <nlohmann/json.hpp>

namespace {

std::string Text(Unit unit, double value) {
  switch (unit) {
    case Unit::kBytes:
      return fmt::format("{:.1f} MB", value * 1e-6);
    case Unit::kTimes:
      return fmt::format("{:.2f} x", value);
    case Unit::kSeconds:
      break;
  }
  if (value >= 1) return fmt::format("{:.2f} s", value);
  if (value >= 1e-3) return fmt::format("{:.2f} ms", value * 1e3);
  if (value >= 1e-6) return fmt::format("{:.2f} us", value * 1e6);
  return fmt::format("{:.2f} ns", value * 1e9);
}

}  // namespace

void Report::Add(const Row& row) {
  if (rows_.empty()) {
    fmt::print("{:30} {:>8} {:>11} {:>8} {:>11} {:>7} {:>8} {}\n", "job", "size", "ours", "peer",
               "theirs", "ratio", "target", "met");
  }
  const bool peer = !row.peer.empty();
  fmt::print("{:30} {:>8} {:>11} {:>8} {:>11} {:>7} {:>8} {}\n", row.job, row.size,
             Text(row.unit, row.ours), row.peer, peer ? Text(row.unit, row.theirs) : "",
             peer ? fmt::format("{:.2f}", row.Ratio()) : "",
             row.target ? fmt::format("<= {:g}", *row.target) : "",
             row.target ? row.Met() ? "yes" : "NO" : "");
  std::fflush(stdout);
  rows_.push_back(row);
}
