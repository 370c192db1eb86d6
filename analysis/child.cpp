#include "analysis/child.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <linux/prctl.h>
#include <signal.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <exception>
#include <functional>
#include <string>
#include <utility>

#include "support/descriptor.h"
#include "support/failure.h"
#include "support/program.h"

namespace rux::analysis {
namespace {

// Findings are limited, and so is what an answer can be.
constexpr std::size_t kLargestAnswer = std::size_t{64} << 20;

// Much longer than any machine takes.
constexpr std::chrono::seconds kLongest(60);

// What the library or the system prints would be taken for messages of the protocol.
void LeaveStandardStreams() {
  const support::Descriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
  if (dup2(nothing.number(), STDIN_FILENO) < 0 || dup2(nothing.number(), STDOUT_FILENO) < 0) {
    throw support::SystemFailure("cannot open", "/dev/null");
  }
}

}  // namespace

Child::Child(const std::function<std::string()>& work)
    : deadline_(std::chrono::steady_clock::now() + kLongest) {
  try {
    Start(work);
  } catch (const support::Failure& failure) {
    refusal_ = failure.what();
    deadline_ = std::chrono::steady_clock::now();
  }
}

void Child::Start(const std::function<std::string()>& work) {
  support::Pipe pipe = support::OpenPipe();
  answers_ = std::move(pipe.read);
  fcntl(answers_.number(), F_SETFL, O_NONBLOCK);
  const support::Descriptor to_parent = std::move(pipe.write);
  const pid_t parent = getpid();
  process_ = fork();
  if (process_ < 0) throw support::SystemFailure("cannot start", "another process");
  if (process_ == 0) Work(work, to_parent, parent);
}

Child::~Child() {
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  End();
}

void Child::Work(const std::function<std::string()>& work, const support::Descriptor& pipe,
                 pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(1);  // too late for the signal
  int status = 1;
  try {
    LeaveStandardStreams();
    if (support::WriteAll(pipe.number(), work())) status = 0;
  } catch (const std::exception&) {  // without an answer
  }
  _exit(status);
}

bool Child::Read() {
  char bytes[1 << 16];
  while (answer_.size() <= kLargestAnswer) {
    const ssize_t count = read(answers_.number(), bytes, sizeof bytes);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && errno == EAGAIN) return IsLate();
    if (count <= 0) return true;
    answer_.append(bytes, static_cast<std::size_t>(count));
  }
  return true;
}

int Child::End() {
  int status = 0;
  // cppcheck-suppress redundantContinue
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) continue;
  process_ = -1;
  return status;
}

std::string Child::Trouble() {
  if (!refusal_.empty()) return refusal_;
  if (IsLate()) return "it takes too long";
  if (answer_.size() > kLargestAnswer) return "too much is found";
  const int status = End();
  if (WIFSIGNALED(status)) {
    const int signal = WTERMSIG(status);
    return fmt::format("its process was killed by signal {} ({})", signal, strsignal(signal));
  }
  return WEXITSTATUS(status) == 0 ? "" : "its process ended without an answer";
}

}  // namespace rux::analysis
