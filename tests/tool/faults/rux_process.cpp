#include "tests/tool/faults/rux_process.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace {

constexpr int kNotPrepared = 126;

void Redirect(int number, const char* path, int flags) {
  const int file = open(path, flags | O_CLOEXEC);
  if (file < 0 || dup2(file, number) < 0) _exit(kNotPrepared);
}

}  // namespace

RuxProcess::RuxProcess(const std::filesystem::path& folder, const Arguments& arguments,
                       const std::function<void()>& prepare) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  // A pipe that is never full: nobody may be reading while the process is supervised.
  fcntl(ends[1], F_SETPIPE_SZ, 1 << 20);
  std::vector<char*> argv = {const_cast<char*>("rux")};
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  id_ = fork();
  if (id_ == 0) {
    Redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
    Redirect(STDOUT_FILENO, "/dev/null", O_WRONLY);
    if (dup2(ends[1], STDERR_FILENO) < 0 || chdir(folder.c_str()) != 0) _exit(kNotPrepared);
    // What whoever runs the tests has open is not there to be counted.
    close_range(STDERR_FILENO + 1, ~0u, CLOSE_RANGE_CLOEXEC);
    setenv("LC_ALL", "C", 1);
    // What is left of temporary files is found there.
    setenv("TMPDIR", ".", 1);
    // Leaks are looked for at the end, with system calls that are not the tool's.
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
    // Opened before: another user may not get to the folder of the program.
    const int program = open(RUX_PROGRAM, O_PATH | O_CLOEXEC);
    prepare();
    fexecve(program, argv.data(), environ);
    _exit(kNotPrepared);
  }
  close(ends[1]);
  errors_ = ends[0];
}

Ended RuxProcess::Wait() {
  Ended ended;
  char buffer[4096];
  for (ssize_t size; (size = read(errors_, buffer, sizeof buffer)) > 0;) {
    ended.errors.append(buffer, static_cast<std::size_t>(size));
  }
  close(errors_);
  int status = 0;
  waitpid(id_, &status, 0);
  if (WIFEXITED(status)) ended.exit_status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) ended.signal = WTERMSIG(status);
  return ended;
}
