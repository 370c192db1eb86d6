#include "tests/damage/program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "tests/damage/confined.h"

namespace {

// More than the program takes for files of a few KiB, and less than a wrong length asks for.
constexpr std::size_t kMemory = std::size_t{64} << 20;

constexpr int kDone = 0;
constexpr int kNotThere = 1;
constexpr int kTrouble = 3;

using Arguments = std::vector<std::string>;

// Commands that can do something with a file of that form.
std::vector<Arguments> CommandsFor(Form form) {
  if (form == Form::kMeta) {
    return {{"dump"}, {"dump", "--raw"}, {"dump", "--json"},
            {"ls"},   {"ls", "SENSOR"},  {"get", "GROUP/BOARD"}};
  }
  return {{"dump"}, {"dump", "--raw"}, {"dump", "--json"}, {"decompile"}, {"where", "GROUP/BOARD"}};
}

std::string Joined(const Arguments& arguments) {
  std::string line = "rux";
  for (const std::string& argument : arguments) line += ' ' + argument;
  return line;
}

// Whether a text names a file: its path, not followed by more of a number.
bool Names(const std::string& text, const std::string& path) {
  for (std::size_t at = text.find(path); at != std::string::npos; at = text.find(path, at + 1)) {
    const std::size_t end = at + path.size();
    if (end == text.size() || text[end] < '0' || text[end] > '9') return true;
  }
  return false;
}

}  // namespace

ProgramRun RunProgram(const Arguments& arguments) {
  const MemoryFile printed;
  ProgramRun run;
  run.status = Confined(kMemory, [&] {
    const int output = open(printed.path().c_str(), O_WRONLY | O_APPEND);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    std::vector<char*> words = {const_cast<char*>("rux")};
    for (const std::string& argument : arguments)
      words.push_back(const_cast<char*>(argument.data()));
    words.push_back(nullptr);
    execv(RUX_PROGRAM, words.data());
    return 100;
  });
  std::ifstream text(printed.path());
  run.printed = {std::istreambuf_iterator<char>(text), {}};
  return run;
}

void VerifyBatch::Add(const std::string& bytes, Load expected) {
  files_.push_back({std::make_unique<MemoryFile>(), expected});
  files_.back().file->Fill(bytes);
}

void VerifyBatch::Run() {
  RunOver(Load::kAccepted);
  RunOver(Load::kRefused);
  files_.clear();
}

void VerifyBatch::RunOver(Load expected) const {
  Arguments arguments = {"verify"};
  for (const File& file : files_) {
    if (file.expected == expected) arguments.push_back(file.file->path());
  }
  if (arguments.size() == 1) return;
  const ProgramRun run = RunProgram(arguments);
  EXPECT_EQ(run.status, expected == Load::kAccepted ? kDone : kTrouble) << run.printed;
  if (expected == Load::kAccepted) return;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    EXPECT_TRUE(Names(run.printed, arguments[i])) << arguments[i] << " in\n" << run.printed;
  }
}

void ExpectOutcomeOfCommand(Form form, const std::string& path, Load expected, std::size_t turn) {
  const std::vector<Arguments> commands = CommandsFor(form);
  Arguments command = commands[turn % commands.size()];
  command.insert(command.begin() + 1, path);
  const ProgramRun run = RunProgram(command);
  if (expected == Load::kRefused) {
    EXPECT_EQ(run.status, kTrouble) << Joined(command) << '\n' << run.printed;
  } else {
    EXPECT_TRUE(run.status == kDone || run.status == kNotThere) << Joined(command) << '\n'
                                                                << run.printed;
  }
}
