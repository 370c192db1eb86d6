#include "support/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "support/descriptor.h"
#include "support/failure.h"

namespace rux::support {

Pipe OpenPipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw SystemFailure("cannot make", "a pipe");
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

pid_t StartProgram(std::vector<std::string> words, const ProgramStreams& streams,
                   const std::string& purpose) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  for (const auto& [file, stream] :
       {std::pair(streams.input, STDIN_FILENO), std::pair(streams.output, STDOUT_FILENO),
        std::pair(streams.messages, STDERR_FILENO)}) {
    posix_spawn_file_actions_adddup2(&files, file, stream);
  }
  pid_t process = -1;
  const int error =
      posix_spawnp(&process, arguments.front(), &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  if (error == ENOENT) {
    throw Failure(ExitStatus::kTrouble, "{} by the program {}, which is not installed", purpose,
                  words.front());
  }
  if (error != 0) throw SystemFailure("cannot run", words.front(), error);
  return process;
}

int WaitForProgram(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace rux::support
