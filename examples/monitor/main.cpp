// Monitors the sensors of this computer as a meta file describes them:
//
//   $ monitor server.meta --metrics /var/lib/node_exporter/server.prom
//   <6>server.meta: sensors read: 38 of 40
//   <4>INLET_TEMP: 41 degrees C, WH (above 40 degrees C)
//
// One thread and one loop: each round reads every input once, compares it with the limits, writes a
// line for what has changed, and the metrics. A meta file that is replaced, or SIGHUP, is loaded
// between two rounds; one that is not sound is refused and the one before stays. docs/monitor.md
// explains how to make a monitor of one's own of this one.
#include <sys/stat.h>

#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>

#include "clock.h"
#include "journal.h"
#include "machine.h"
#include "metrics.h"

namespace {

constexpr char kUsage[] =
    "usage: monitor META [OPTION...]\n"
    "  --root DIR       read DIR/sys/class/hwmon\n"
    "  --metrics FILE   write readings and bands to FILE, for Prometheus\n"
    "  --interval MS    milliseconds from one round to the next; without it, RUXLOOP\n"
    "  --cycles N       end after N rounds\n"
    "  --once           end after one round\n"
    "  --all            watch the limits of all sensors, whatever their INITFLAG is\n";

struct Arguments {
  std::string meta;
  std::string metrics;
  monitor::Options machine;
  std::optional<std::uint32_t> interval;
  std::optional<std::uint32_t> cycles;
};

std::optional<std::uint32_t> NumberOf(std::string_view text) {
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || rest != end) return std::nullopt;
  return number;
}

// None if the command line is wrong.
std::optional<Arguments> Parse(int argc, char** argv) {
  Arguments arguments;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    const char* const value = argv[i + 1];
    if (word == "--once") {
      arguments.cycles = 1;
    } else if (word == "--all") {
      arguments.machine.watch_all = true;
    } else if (word.substr(0, 2) != "--") {
      if (!arguments.meta.empty()) return std::nullopt;
      arguments.meta = word;
    } else if (value == nullptr) {
      return std::nullopt;
    } else if (++i; word == "--root") {
      arguments.machine.root = value;
    } else if (word == "--metrics") {
      arguments.metrics = value;
    } else if (word == "--interval" || word == "--cycles") {
      std::optional<std::uint32_t>& number =
          word == "--cycles" ? arguments.cycles : arguments.interval;
      number = NumberOf(value);
      if (!number) return std::nullopt;
    } else {
      return std::nullopt;
    }
  }
  if (arguments.meta.empty()) return std::nullopt;
  return arguments;
}

// What a file is known by: another one, or a write into it, changes this.
auto StampOf(const std::string& path) {
  struct stat status {};
  stat(path.c_str(), &status);
  return std::make_tuple(status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                         status.st_mtim.tv_nsec);
}

class Monitor {
 public:
  explicit Monitor(const Arguments& arguments)
      : arguments_(arguments), machine_(arguments.machine) {}

  // Returns the exit status.
  int Run() {
    if (!Load()) return 3;
    while (!IsLast()) {
      ++counters_.cycles;
      machine_.ReadAll();
      WriteMetrics();
      // The rest of the round is long enough to load a file.
      if (StampOf(arguments_.meta) != stamp_) Load();
      if (IsLast() || !WaitForRound()) break;
    }
    return 0;
  }

 private:
  bool IsLast() const { return counters_.cycles == arguments_.cycles; }

  bool Load() {
    // Should the file change while it is read, it is loaded again.
    stamp_ = StampOf(arguments_.meta);
    const bool is_loaded = machine_.Load(arguments_.meta);
    if (!is_loaded) ++counters_.refused;
    const std::optional<std::uint32_t>& own = arguments_.interval;
    clock_.Set(own ? std::chrono::milliseconds(*own) : machine_.interval());
    return is_loaded;
  }

  bool WaitForRound() {
    monitor::Wake wake = clock_.Wait();
    for (; wake == monitor::Wake::kReload; wake = clock_.Wait()) Load();
    counters_.missed = clock_.missed();
    return wake == monitor::Wake::kRound;
  }

  // A failure is reported when it begins and when it ends.
  void WriteMetrics() {
    if (arguments_.metrics.empty()) return;
    const std::string failure = monitor::WriteWhole(
        arguments_.metrics, monitor::MetricsText(machine_.sensors(), counters_));
    if (failure == failure_) return;
    failure_ = failure;
    if (failure.empty())
      monitor::Log(monitor::Priority::kNotice, "metrics are written again");
    else
      monitor::Log(monitor::Priority::kError, "no metrics: " + failure);
  }

  const Arguments& arguments_;
  monitor::Machine machine_;
  monitor::Clock clock_;
  monitor::Counters counters_;
  decltype(StampOf("")) stamp_;
  std::string failure_;  // of the metrics, empty if they were written
};

}  // namespace

int main(int argc, char** argv) {
  const std::optional<Arguments> arguments = Parse(argc, argv);
  if (!arguments) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  return Monitor(*arguments).Run();
}
