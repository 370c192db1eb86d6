// rux as a child process, in surroundings that a test prepares.
#ifndef TESTS_TOOL_FAULTS_RUX_PROCESS_H_
#define TESTS_TOOL_FAULTS_RUX_PROCESS_H_

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

using Arguments = std::vector<std::string>;

struct Ended {
  int exit_status = -1;  // -1: a signal ended it
  int signal = 0;
  std::string errors;  // what it printed to standard error
};

class RuxProcess {
 public:
  // Starts rux in the folder. `prepare` runs in the child, last of all.
  RuxProcess(
      const std::filesystem::path& folder, const Arguments& arguments,
      const std::function<void()>& prepare = [] {});

  pid_t id() const { return id_; }
  // Reads what it prints, as far as nobody has done that yet, and waits for its end. Once.
  Ended Wait();

 private:
  pid_t id_ = -1;
  int errors_ = -1;
};

#endif  // TESTS_TOOL_FAULTS_RUX_PROCESS_H_
