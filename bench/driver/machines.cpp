#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "bench/driver/jobs.h"
#include "bench/driver/race.h"
#include "bench/driver/report.h"
#include "bench/driver/rows.h"
#include "bench/files/allocations.h"
#include "bench/files/model_files.h"
#include "bench/files/process.h"
#include "bench/model/contents.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t kSmallSize = 10;
constexpr std::uint32_t kSizes[] = {kSmallSize, 500, 1000, kTargetSize, 100000};

// What is aimed at, whatever the content.
constexpr double kByDtc = 0.15;
constexpr double kByFlatc = 0.5;
constexpr double kMemoryByDtc = 0.75;
constexpr double kWithDebugMeta = 1.5;  // a debug meta file on top may take half as much again
constexpr double kSmallMachine = 2e-3;  // seconds
constexpr std::uint32_t kMany = 1000;
constexpr double kManyMachines = 1.5;  // seconds

std::vector<Target> AtTargetSize(std::uint32_t size, double ratio) {
  if (size != kTargetSize) return {};
  return {{Target::kRatio, ratio}};
}

// A way to compile a machine.
struct Way {
  std::string job;
  Command command;
  std::uintmax_t bytes;  // what it writes
  double factor;         // the ratios aimed at are those of plain compiling times this
};

std::vector<Way> WaysToCompile(const std::string& content, std::uint32_t size) {
  const ModelFile meta{size, "meta", content}, debug_meta{size, "metad", content};
  const std::uintmax_t bytes = fs::file_size(meta.Made());
  const std::uintmax_t both = bytes + fs::file_size(debug_meta.Made());
  std::vector<Way> ways = {{"compile", meta.HowToMake(), bytes, 1},
                           {"compile -g", debug_meta.HowToMake(), both, kWithDebugMeta}};
  if (!OptionsOf(content).empty()) {
    ways.push_back({"compile, warned", meta.HowToMake({}), bytes, 1});
  }
  return ways;
}

// The scripts of a machine.
std::vector<std::string> ScriptsOf(std::uint32_t size, const std::string& content) {
  std::vector<std::string> scripts;
  const fs::path main = ModelFile{size, "rux", content}.Made();
  for (const auto& entry : fs::directory_iterator(main.parent_path())) {
    if (entry.path().extension() == ".rux") scripts.push_back(entry.path());
  }
  std::sort(scripts.begin(), scripts.end());
  return scripts;
}

// What reading the scripts and writing as many bytes takes with plain calls.
Command Floor(const std::vector<std::string>& scripts, std::uintmax_t bytes) {
  Command command = {RUX_FLOOR, ScratchFolder() + "/floor.meta", std::to_string(bytes)};
  command.insert(command.end(), scripts.begin(), scripts.end());
  return command;
}

struct Peer {
  std::string name;
  Command command;
};

std::vector<Peer> PeersOf(const std::string& content, std::uint32_t size) {
  std::vector<Peer> peers = {{"dtc", {}}, {"flatc", {}}};
  if (size > kTargetSize) peers.erase(peers.begin());  // dtc takes the square of the size
  for (Peer& peer : peers) {
    const ModelFile compiled{size, peer.name == "dtc" ? "dtb" : "bin", content};
    compiled.Made();
    peer.command = compiled.HowToMake();
  }
  return peers;
}

// What a program took, for the way or the peer of the same index.
struct Took {
  Usage usage;
  double allocations;
};

template <typename Programs>
std::vector<Took> TookOf(const Programs& programs, const Usage* usage) {
  std::vector<Took> took;
  for (const auto& program : programs) {
    took.push_back({*usage++, static_cast<double>(CountAllocations(program.command))});
  }
  return took;
}

class MachineRows {
 public:
  MachineRows(Report& report, std::string content, std::uint32_t size)
      : report_(report), content_(std::move(content)), size_(size) {}

  void AddPeer(const Way& way, const Took& ours, const std::string& peer, const Took& theirs) {
    const bool dtc = peer == "dtc";
    AddTimes(report_, {content_, way.job, size_}, ours.usage, peer, theirs.usage,
             AtTargetSize(size_, (dtc ? kByDtc : kByFlatc) * way.factor));
    Add(way.job + ", memory", Unit::kBytes, ours.usage.memory, peer, theirs.usage.memory,
        dtc ? AtTargetSize(size_, kMemoryByDtc * way.factor) : std::vector<Target>{});
    Add(way.job + ", page faults", Unit::kCount, ours.usage.faults, peer, theirs.usage.faults, {});
    Add(way.job + ", allocations", Unit::kCount, ours.allocations, peer, theirs.allocations, {});
  }

  void AddFloor(const Way& way, const Usage& ours, const Usage& floor) {
    // What starting a program costs hides how small machines grow.
    const auto growth = size_ > 1000 ? std::vector<Target>{kStraight} : std::vector<Target>{};
    AddTimes(report_, {content_, way.job, size_}, ours, "floor", floor, growth);
    Add(way.job + ", memory", Unit::kBytes, ours.memory, "floor", floor.memory, growth);
  }

 private:
  void Add(const std::string& job, Unit unit, double ours, const std::string& peer, double theirs,
           const std::vector<Target>& targets) {
    report_.Add({content_, job, size_, unit, ours, peer, theirs, targets});
  }

  Report& report_;
  const std::string content_;
  const std::uint32_t size_;
};

void CompileMachine(Report& report, const std::string& content, std::uint32_t size) {
  const std::vector<Way> ways = WaysToCompile(content, size);
  const std::vector<Peer> peers = PeersOf(content, size);
  const std::vector<std::string> scripts = ScriptsOf(size, content);
  std::vector<Runner> runners;
  for (const Way& way : ways) runners.push_back({way.command});
  for (const Peer& peer : peers) runners.push_back({peer.command});
  for (const Way& way : ways) runners.push_back({Floor(scripts, way.bytes)});
  const std::vector<Usage> usage = Race(runners);
  const std::vector<Took> ours = TookOf(ways, usage.data());
  const std::vector<Took> theirs = TookOf(peers, usage.data() + ways.size());
  const Usage* floor = usage.data() + ways.size() + peers.size();

  MachineRows rows(report, content, size);
  for (std::size_t i = 0; i < ways.size(); ++i) {
    for (std::size_t k = 0; k < peers.size(); ++k) {
      rows.AddPeer(ways[i], ours[i], peers[k].name, theirs[k]);
    }
    rows.AddFloor(ways[i], ours[i].usage, floor[i]);
  }
  AddTimes(report, {content, ways[1].job, size}, usage[1], ways[0].job, usage[0],
           AtTargetSize(size, kWithDebugMeta));
  if (size == kSmallSize) {
    AddTimes(report, {content, "compile a small machine", size}, usage[0], "", {},
             {{Target::kValue, kSmallMachine}});
  }
}

// Small machines, each with its own files in a folder of its own.
void CompileMany(Report& report, const std::string& content) {
  Command command = {RUX_PROGRAM, "compile", "-j2"};
  for (const std::string& option : OptionsOf(content)) command.push_back(option);
  const std::vector<std::string> scripts = ScriptsOf(kSmallSize, content);
  const std::string folder = ScratchFolder() + "/many-" + content + '/';
  for (std::uint32_t i = 0; i < kMany; ++i) {
    const fs::path machine = folder + std::to_string(i);
    fs::create_directories(machine);
    for (const fs::path script : scripts) {
      fs::copy_file(script, machine / script.filename(), fs::copy_options::overwrite_existing);
    }
    command.push_back(machine / "machine.rux");
  }
  AddTimes(report, {content, "compile many small machines, -j2", kMany}, Race({{command}})[0], "",
           {}, {{Target::kValue, kManyMachines}});
}

}  // namespace

void CompileMachines(Report& report, std::uint32_t most) {
  for (const Content& content : Contents()) {
    for (const std::uint32_t size : kSizes) {
      if (size <= most) CompileMachine(report, content.name, size);
    }
    CompileMany(report, content.name);
  }
}
