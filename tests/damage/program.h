// Running the command-line program over files that may be damaged.
#ifndef TESTS_DAMAGE_PROGRAM_H_
#define TESTS_DAMAGE_PROGRAM_H_

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/damage/loads.h"
#include "tests/damage/memory_file.h"

// What the program answers to the shell, and all that it prints.
struct ProgramRun {
  std::optional<int> status;  // nothing: it did not come to an end (confined.h)
  std::string printed;
};
ProgramRun RunProgram(const std::vector<std::string>& arguments);

// What `rux verify` says of many files, a batch of them at a time.
class VerifyBatch {
 public:
  // A file and the outcome that it must have: accepted or refused.
  void Add(const std::string& bytes, Load expected);
  bool full() const { return files_.size() == kMost; }

  // Runs the program; fails the current test for every file that has another outcome. Empties the
  // batch.
  void Run();

 private:
  static constexpr std::size_t kMost = 200;

  struct File {
    std::unique_ptr<MemoryFile> file;
    Load expected;
  };

  void RunOver(Load expected) const;

  std::vector<File> files_;
};

// Whether one of the other commands, chosen by `turn`, refuses the file or takes it as it must.
// Fails the current test when it does not.
void ExpectOutcomeOfCommand(Form form, const std::string& path, Load expected, std::size_t turn);

#endif  // TESTS_DAMAGE_PROGRAM_H_
