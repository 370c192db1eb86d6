#include "bench/driver/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <nlohmann/json.hpp>

namespace {

constexpr char kColumns[] = "{:7} {:40} {:>8} {:>10} {:11} {:>10} {:>8} {:>6} {:>6}  {:24} {}\n";

std::string Text(Unit unit, double value) {
  if (unit == Unit::kCount) return fmt::format("{:.0f}", value);
  struct Scale {
    Unit unit;
    double one;
    const char* name;
  };
  const Scale scales[] = {{Unit::kBytes, 1e6, "MB"},
                          {Unit::kSeconds, 1, "s"},
                          {Unit::kSeconds, 1e-3, "ms"},
                          {Unit::kSeconds, 1e-6, "us"},
                          {Unit::kSeconds, 1e-9, "ns"}};
  const Scale* scale = std::find_if(scales, std::end(scales) - 1, [&](const Scale& fits) {
    return fits.unit == unit && (unit == Unit::kBytes || std::abs(value) >= fits.one);
  });
  return fmt::format("{:.2f} {}", value / scale->one, scale->name);
}

std::string Text(std::optional<double> number) {
  return number ? fmt::format("{:.2f}", *number) : "";
}

std::optional<double> Looked(const Row& row, Target::Of of) {
  switch (of) {
    case Target::kValue:
      return row.ours;
    case Target::kRatio:
      return row.Ratio();
    case Target::kGrowth:
      break;
  }
  return row.growth;
}

std::string Text(const Row& row, const Target& target) {
  switch (target.of) {
    case Target::kValue:
      return Text(row.unit, target.most);
    case Target::kRatio:
      return fmt::format("ratio {:.3g}", target.most);
    case Target::kGrowth:
      break;
  }
  return fmt::format("growth {:.3g}", target.most);
}

// Those that can be looked at: the first row of a job has no growth.
std::string TargetsText(const Row& row) {
  std::string text;
  for (const Target& target : row.targets) {
    if (Looked(row, target.of)) text += (text.empty() ? "" : ", ") + Text(row, target);
  }
  return text;
}

double Exponent(double before, double now, double times) {
  return std::log(now / before) / std::log(times);
}

const char* NameOf(Unit unit) {
  switch (unit) {
    case Unit::kSeconds:
      return "seconds";
    case Unit::kBytes:
      return "bytes";
    case Unit::kCount:
      break;
  }
  return "count";
}

nlohmann::json Json(std::optional<double> number) {
  return number ? nlohmann::json(*number) : nullptr;
}

}  // namespace

std::optional<double> Row::Ratio() const {
  return peer.empty() ? std::nullopt : std::optional(ours / theirs);
}

std::optional<bool> Row::Met() const {
  std::optional<bool> met;
  for (const Target& target : targets) {
    const auto looked = Looked(*this, target.of);
    if (looked) met = met.value_or(true) && *looked <= target.most;
  }
  return met;
}

void Report::Add(Row row) {
  const auto same_job = [&](const Row& other) {
    return other.content == row.content && other.job == row.job;
  };
  if (std::none_of(rows_.begin(), rows_.end(), same_job)) {
    std::fprintf(stderr, "%s: %s\n", row.content.c_str(), row.job.c_str());
  }
  const auto before = std::find_if(rows_.rbegin(), rows_.rend(), [&](const Row& other) {
    return same_job(other) && other.peer == row.peer;
  });
  if (before == rows_.rend()) {
    const auto job = std::find_if(rows_.rbegin(), rows_.rend(), same_job).base();
    rows_.insert(job == rows_.begin() ? rows_.end() : job, std::move(row));
    return;
  }
  if (before->size < row.size) {
    const double times = static_cast<double>(row.size) / before->size;
    row.growth = Exponent(before->ours, row.ours, times);
    if (!row.peer.empty()) row.their_growth = Exponent(before->theirs, row.theirs, times);
  }
  rows_.insert(before.base(), std::move(row));
}

void Report::Print() const {
  fmt::print(kColumns, "content", "job", "size", "ours", "peer", "theirs", "ratio", "growth",
             "theirs", "target, at most", "met");
  for (const Row& row : rows_) {
    const auto met = row.Met();
    fmt::print(kColumns, row.content, row.job, row.size, Text(row.unit, row.ours), row.peer,
               row.peer.empty() ? "" : Text(row.unit, row.theirs), Text(row.Ratio()),
               Text(row.growth), Text(row.their_growth), TargetsText(row),
               met ? *met ? "yes" : "NO" : "");
  }
}

void Report::WriteJson(const std::string& path) const {
  auto rows = nlohmann::json::array();
  for (const Row& row : rows_) {
    auto targets = nlohmann::json::array();
    for (const Target& target : row.targets) {
      const char* const names[] = {"ours", "ratio", "growth"};
      targets.push_back({{"of", names[target.of]}, {"most", target.most}});
    }
    const bool alone = row.peer.empty();
    const auto met = row.Met();
    rows.push_back({{"content", row.content},
                    {"job", row.job},
                    {"size", row.size},
                    {"unit", NameOf(row.unit)},
                    {"ours", row.ours},
                    {"peer", alone ? nlohmann::json() : nlohmann::json(row.peer)},
                    {"theirs", alone ? nlohmann::json() : nlohmann::json(row.theirs)},
                    {"ratio", Json(row.Ratio())},
                    {"growth", Json(row.growth)},
                    {"theirGrowth", Json(row.their_growth)},
                    {"targets", targets},
                    {"met", met ? nlohmann::json(*met) : nlohmann::json()}});
  }
  std::ofstream file(path);
  file << nlohmann::json{{"rows", rows}}.dump(2) << '\n';
  if (!file.flush()) throw std::runtime_error("cannot write " + path);
}
