// Compiles many scripts, each in a process of its own.
//
//   compile_worker FOLDER COUNT DIRT
//
// The scripts are FOLDER/0/board.rux and so on; beside each go its meta file, its debug meta file
// and "messages", which also has what the functions answered. DIRT is a number: of bytes that
// every process uses and gives back before it compiles.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "ruxcomp/compile.h"
#include "tests/support/host.h"

namespace {

constexpr unsigned int kMostSeconds = 20;

// Leaves pieces of memory behind that are not zero.
void UseMemory(std::size_t size) {
  std::vector<std::string> texts;
  for (std::size_t piece = 16; size > piece; piece += piece / 8) {
    texts.emplace_back(piece, static_cast<char>(piece));
    size -= piece;
  }
}

class Run {
 public:
  void Compile() {
    host::TakeMessages();
    if (!Step("start", [] { return gccCompStart("board.rux"); })) return;
    if (!Step("parse", [] { return gccParse(), 1u; })) return;
    Step("check", gccCheck);
    // A host may write a model whatever the check found.
    Step("output", [] { return gccOutput("board.meta"); });
    Step("debug output", [] { return gccOutputD("board.metad"); });
  }

  const std::string& reported() const { return reported_; }

 private:
  // False when the step answered 0 or raised an error.
  bool Step(const char* name, const std::function<std::uint32_t()>& step) {
    std::uint32_t answer = 0;
    std::string end;
    try {
      answer = step();
      end = std::to_string(answer);
    } catch (const std::exception& raised) {
      end = raised.what();
    }
    for (const std::string& message : host::TakeMessages()) reported_ += message;
    reported_ += std::string(name) + ": " + end + '\n';
    return answer != 0;
  }

  std::string reported_;
};

// 0, or what went wrong with the process.
int CompileIn(const std::string& folder, std::size_t dirt) {
  const pid_t process = fork();
  if (process == 0) {
    alarm(kMostSeconds);
    if (chdir(folder.c_str()) != 0) _exit(2);
    UseMemory(dirt);
    Run run;
    run.Compile();
    std::ofstream messages("messages", std::ios::binary);
    messages << run.reported();
    _exit(messages.flush() ? 0 : 3);
  }
  int status = 0;
  waitpid(process, &status, 0);
  return status;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) return 2;
  const std::string folder = arguments[1];
  const int scripts = std::atoi(arguments[2]);
  const auto dirt = static_cast<std::size_t>(std::atoi(arguments[3]));
  for (int i = 0; i < scripts; ++i) {
    const int status = CompileIn(folder + '/' + std::to_string(i), dirt);
    if (status == 0) continue;
    std::printf("script %d: status %d\n", i, status);
    return 1;
  }
}
