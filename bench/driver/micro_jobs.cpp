#include <algorithm>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

#include "bench/driver/jobs.h"
#include "bench/files/process.h"

namespace {

constexpr int kRounds = 3;
// What caches cost: twice the time for ten times the model is still called flat.
constexpr double kFlat = 0.3;

// Who of ours did the job: the plain functions, the read model, or the read model through its C
// interface, which is compared with the read model itself.
const char* const kOurs[] = {"ours", "model", "c"};

struct MicroTarget {
  const char* job;
  const char* who;     // of kOurs
  const char* peer;    // "" when the target looks at ours alone
  std::uint32_t size;  // 0: any
  std::vector<Target> targets;
};
const std::vector<Target> kQuickAndFlat = {{Target::kValue, 1e-6}, {Target::kGrowth, kFlat}};
const MicroTarget kTargets[] = {
    {"load", "ours", "libfdt", 10000, {{Target::kRatio, 2}}},
    {"sensor by ID", "ours", "", 0, kQuickAndFlat},
    {"sensor by name", "ours", "", 0, kQuickAndFlat},
    {"sensor by index", "ours", "", 0, kQuickAndFlat},
    {"group index", "ours", "", 0, kQuickAndFlat},
    {"entry by name", "ours", "", 0, kQuickAndFlat},
    {"sensor by ID", "model", "flatbuffers", 0, {{Target::kRatio, 2}}},
    {"sensor by name", "model", "flatbuffers", 0, {{Target::kRatio, 2}}},
    {"one field", "model", "", 0, {{Target::kValue, 10e-9}}},
    {"walk", "model", "", 10000, {{Target::kValue, 1e-3}}},
    {"sensor by ID", "c", "model", 0, {{Target::kRatio, 1.2}}},
    {"sensor by name", "c", "model", 0, {{Target::kRatio, 1.2}}},
    {"load", "c", "model", 0, {{Target::kRatio, 1.2}}},
    {"walk", "c", "model", 10000, {{Target::kRatio, 1.2}}},
};

struct Job {
  std::string name;
  // By who did it and the size: seconds of processor time, one for each round.
  std::map<std::string, std::map<std::uint32_t, std::vector<double>>> times;
};

double Seconds(double time, const std::string& unit) {
  const std::map<std::string, double> units = {{"ns", 1e-9}, {"us", 1e-6}, {"ms", 1e-3}, {"s", 1}};
  return time * units.at(unit);
}

Job& Find(std::vector<Job>& jobs, const std::string& name) {
  const auto found =
      std::find_if(jobs.begin(), jobs.end(), [&](const Job& job) { return job.name == name; });
  if (found != jobs.end()) return *found;
  jobs.push_back({name, {}});
  return jobs.back();
}

// Runs one of the programs and takes its results, which are called JOB/WHO/SIZE.
void RunProgram(const std::string& program, std::uint32_t most, std::vector<Job>& jobs) {
  const std::string results = ScratchFolder() + "/micro.json";
  Run({program, "--benchmark_min_time=0.05", "--benchmark_out_format=json",
       "--benchmark_out=" + results, "--benchmark_filter=-/" + std::to_string(most) + "0"});
  const auto all = nlohmann::json::parse(std::ifstream(results));
  for (const auto& result : all.at("benchmarks")) {
    if (result.at("run_type") != "iteration") continue;
    const std::string name = result.at("name");
    const auto who = name.find('/'), size = name.rfind('/');
    Find(jobs, name.substr(0, who))
        .times[name.substr(who + 1, size - who - 1)]
              [static_cast<std::uint32_t>(std::stoul(name.substr(size + 1)))]
        .push_back(Seconds(result.at("cpu_time"), result.at("time_unit")));
  }
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

std::vector<Target> Targets(const std::string& job, const std::string& who, const std::string& peer,
                            std::uint32_t size) {
  const auto row = std::find_if(kTargets, std::end(kTargets), [&](const MicroTarget& target) {
    return target.job == job && target.who == who && target.peer == peer &&
           (target.size == 0 || target.size == size);
  });
  return row == std::end(kTargets) ? std::vector<Target>{} : row->targets;
}

void AddRows(Report& report, const Job& job, const std::string& who) {
  const auto ours = job.times.find(who);
  if (ours == job.times.end()) return;
  const std::string label = who == kOurs[0] ? job.name : job.name + ", " + who;
  const auto add = [&](std::uint32_t size, double our_time, const std::string& peer,
                       double their_time) {
    report.Add({"plain", label, size, Unit::kSeconds, our_time, peer, their_time,
                Targets(job.name, who, peer, size)});
  };
  const auto is_peer = [&](const std::string& name) {
    if (who == "c") return name == "model";
    return std::find(kOurs, std::end(kOurs), name) == std::end(kOurs);
  };
  for (const auto& [size, our_times] : ours->second) add(size, Median(our_times), "", 0);
  for (const auto& [peer, their_sizes] : job.times) {
    if (!is_peer(peer)) continue;
    for (const auto& [size, our_times] : ours->second) {
      const auto theirs = their_sizes.find(size);
      if (theirs != their_sizes.end()) add(size, Median(our_times), peer, Median(theirs->second));
    }
  }
}

}  // namespace

void MicroBenchmarks(Report& report, std::uint32_t most) {
  std::vector<Job> jobs;
  for (int round = 0; round < kRounds; ++round) {
    for (const char* program : {RUX_MICRO_PROGRAMS}) RunProgram(program, most, jobs);
  }
  for (const Job& job : jobs) {
    for (const char* who : kOurs) AddRows(report, job, who);
  }
}
