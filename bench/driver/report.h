// What was measured: one table for people, the same as JSON for programs.
#ifndef BENCH_DRIVER_REPORT_H_
#define BENCH_DRIVER_REPORT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

enum class Unit { kSeconds, kBytes, kTimes };

struct Row {
  std::string job;
  std::uint32_t size;
  Unit unit;
  double ours;
  std::string peer = {};  // whom ours is compared with; "" for nobody
  double theirs = 0;      // with a peer
  std::optional<double> target =
      {};  // the most that the ratio may be; without a peer, that ours may be

  double Ratio() const { return theirs > 0 ? ours / theirs : 0; }
  bool Met() const { return !target || (peer.empty() ? ours : Ratio()) <= *target; }
};

class Report {
 public:
  // Prints the row at once: a whole run takes minutes.
  void Add(const Row& row);
  // How much a job of the same name, peer and unit grew since its last, smaller size: a row of its
  // own, with the most that ten times the size may take.
  void AddGrowth(const Row& row, std::optional<double> target);
  void WriteJson(const std::string& path) const;

 private:
  std::vector<Row> rows_;
};

#endif  // BENCH_DRIVER_REPORT_H_
