// What was measured: one table for people, the same as JSON for programs.
#ifndef BENCH_DRIVER_REPORT_H_
#define BENCH_DRIVER_REPORT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

enum class Unit { kSeconds, kBytes, kCount };

// The most that something may be.
struct Target {
  enum Of {
    kValue,   // ours, in its unit
    kRatio,   // ours by theirs
    kGrowth,  // the exponent of ours
  };
  Of of;
  double most;
};

struct Row {
  std::string content;  // what kind of machine, or "-"
  std::string job;
  std::uint32_t size;
  Unit unit;
  double ours;
  std::string peer = {};  // whom ours is compared with; "" for nobody
  double theirs = 0;
  std::vector<Target> targets = {};
  // Filled by the report: e, where ours (theirs) grew like size to the e since the row of the same
  // content, job and peer with the size before this one; nothing in the first.
  std::optional<double> growth = {};
  std::optional<double> their_growth = {};

  std::optional<double> Ratio() const;
  // Whether the targets are met; nothing when there are none that can be looked at.
  std::optional<bool> Met() const;
};

class Report {
 public:
  // Tells of new jobs on standard error: a whole run takes minutes.
  void Add(Row row);
  // Every job with every peer in the order in which they came, by size.
  void Print() const;
  void WriteJson(const std::string& path) const;

 private:
  std::vector<Row> rows_;  // in the order in which they are printed
};

#endif  // BENCH_DRIVER_REPORT_H_
