#include "bench/files/process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>

namespace {

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

pid_t Start(const Command& command) {
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
  }
  pid_t process = -1;
  const int error =
      posix_spawnp(&process, arguments[0], &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  if (error) throw std::runtime_error("cannot start " + command[0]);
  return process;
}

}  // namespace

Usage Run(const Command& command, int status) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t process = Start(command);
  int ended = 0;
  rusage used{};
  if (wait4(process, &ended, 0, &used) != process) throw std::runtime_error("wait4 failed");
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  if (!WIFEXITED(ended) || WEXITSTATUS(ended) != status) {
    std::string text;
    for (const std::string& argument : command) text += argument + ' ';
    throw std::runtime_error("failed: " + text);
  }
  return {wall.count(), Seconds(used.ru_utime) + Seconds(used.ru_stime),
          static_cast<double>(used.ru_maxrss) * 1024, static_cast<double>(used.ru_minflt)};
}
