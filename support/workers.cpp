#include "support/workers.h"

#include <linux/prctl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "support/failure.h"
#include "support/memory_file.h"
#include "support/signals.h"

namespace rux::support {
namespace {

// What a process prints has no reader that could be too slow.
struct Worker {
  explicit Worker(std::size_t ordinal_of_work) : ordinal(ordinal_of_work) {}

  std::size_t ordinal;
  MemoryFile output{"standard output"};
  MemoryFile errors{"standard error"};
};

class Workers {
 public:
  Workers(std::size_t count, std::size_t most, const std::function<ExitStatus(std::size_t)>& work,
          const std::function<void(std::size_t, const JobResult&)>& report,
          const std::function<void()>& interrupted)
      : count_(count),
        most_(most),
        work_(work),
        report_(report),
        interrupted_(interrupted),
        done_(count) {}
  ~Workers() { End(SIGTERM); }
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  void Run(const std::function<void()>& meanwhile) {
    StartAsMany();
    if (meanwhile != nullptr) {
      // A signal ends this process then, and the system the others.
      signals_.Unblock();
      meanwhile();
      signals_.Block();
      TakeOver();
    }
    while (reported_ < count_) {
      StartAsMany();
      const int signal = signals_.Wait();
      if (signal != SIGCHLD) {
        End(signal);
        interrupted_();
        signals_.EndWith(signal);
      }
      TakeOver();
    }
  }

 private:
  void StartAsMany() {
    while (started_ < count_ && under_way_.size() < most_) Start();
  }

  void TakeOver() {
    Collect();
    for (; reported_ < count_ && done_[reported_]; ++reported_) {
      report_(reported_, *done_[reported_]);
      done_[reported_] = JobResult();
    }
  }

  void Start() {
    auto worker = std::make_unique<Worker>(started_);
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process < 0) throw SystemFailure("cannot start", "another process");
    if (process == 0) Work(*worker, parent);
    under_way_.emplace(process, std::move(worker));
    ++started_;
  }

  [[noreturn]] void Work(const Worker& worker, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    signals_.Unblock();
    const ExitStatus status = RunAndReportFailures([&] {
      // Too late for the signal.
      if (getppid() != parent) return ExitStatus::kTrouble;
      Redirect(worker.output, STDOUT_FILENO, "standard output");
      Redirect(worker.errors, STDERR_FILENO, "standard error");
      return work_(worker.ordinal);
    });
    _exit(static_cast<int>(status));
  }

  static void Redirect(const MemoryFile& file, int number, const char* name) {
    if (dup2(file.number(), number) < 0) throw SystemFailure("cannot redirect", name);
  }

  // Takes over from those that have ended.
  void Collect() {
    int status;
    pid_t process;
    while ((process = waitpid(-1, &status, WNOHANG)) > 0) {
      const auto place = under_way_.find(process);
      if (place == under_way_.end()) continue;
      const std::unique_ptr<Worker> worker = std::move(place->second);
      under_way_.erase(place);
      JobResult done;
      if (WIFEXITED(status)) done.status = static_cast<ExitStatus>(WEXITSTATUS(status));
      if (WIFSIGNALED(status)) done.signal = WTERMSIG(status);
      done.output = worker->output.Bytes();
      done.errors = worker->errors.Bytes();
      done_[worker->ordinal] = std::move(done);
    }
    if (process < 0 && !under_way_.empty()) throw SystemFailure("cannot wait for", "a process");
  }

  void End(int signal) {
    for (const auto& [process, worker] : under_way_) kill(process, signal);
    for (const auto& [process, worker] : under_way_) {
      // cppcheck-suppress redundantContinue
      while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) continue;
    }
    under_way_.clear();
  }

  const std::size_t count_;
  const std::size_t most_;
  const std::function<ExitStatus(std::size_t)>& work_;
  const std::function<void(std::size_t, const JobResult&)>& report_;
  const std::function<void()>& interrupted_;
  const AwaitedSignals signals_;
  std::map<pid_t, std::unique_ptr<Worker>> under_way_;
  std::vector<std::optional<JobResult>> done_;
  std::size_t started_ = 0;
  std::size_t reported_ = 0;
};

}  // namespace

void RunJobs(std::size_t count, std::size_t most,
             const std::function<ExitStatus(std::size_t)>& work,
             const std::function<void(std::size_t, const JobResult&)>& report,
             const std::function<void()>& interrupted, const std::function<void()>& meanwhile) {
  Workers(count, most, work, report, interrupted).Run(meanwhile);
}

}  // namespace rux::support
