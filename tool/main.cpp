#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "CLI/CLI.hpp"
#include "tool/command.h"
#include "tool/completion/completion.h"
#include "tool/run_to_the_end.h"
#include "tool/standard_streams.h"
#include "tool/text/name_text.h"
#include "tool/text/nearest.h"

namespace {

using rux::ExitStatus;

std::string UnknownCommand(const std::string& name) {
  std::vector<std::string> names;
  for (const rux::Command& command : rux::Commands()) names.emplace_back(command.name);
  return "there is no command " + rux::NameText(name) + rux::NearText(name, names);
}

ExitStatus WrongUsage(const CLI::App& app, const CLI::ParseError& error, const std::string& first) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  const bool is_unknown_command = commands.empty() && !first.empty() && first.front() != '-';
  const std::string text = is_unknown_command ? UnknownCommand(first) : error.what();
  const std::string command = commands.empty() ? "" : ' ' + commands.front()->get_name();
  rux::PrintError("rux: error: " + text + "\nSee 'rux" + command + " --help'.\n");
  return ExitStatus::kWrongUsage;
}

ExitStatus Run(int argc, const char* const* argv) {
  if (argc > 1 && argv[1] == std::string_view(rux::kCompletion)) {
    return rux::Complete({argv + 2, argv + argc});
  }
  CLI::App app;
  rux::SetUpProgram(app);
  rux::Action action;
  for (const rux::Command& command : rux::Commands()) {
    CLI::App* sub_app = app.add_subcommand(command.name, command.help);
    // What is not asked for needs no arguments.
    if (std::find(argv, argv + argc, std::string_view(command.name)) == argv + argc) continue;
    sub_app->final_callback([&action, run = command.set_up(*sub_app)] { action = run; });
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) return WrongUsage(app, error, argc > 1 ? argv[1] : "");
    // Help and version come this way, too.
    std::ostringstream text;
    app.exit(error, text);
    rux::PrintOut(text.str());
    return ExitStatus::kDone;
  }
  if (!action) {
    rux::PrintError(app.help());
    return ExitStatus::kWrongUsage;
  }
  return action();
}

// A model is a great many small pieces of memory that are made once and released together at the
// end. What the allocator does by default to use freed pieces again while others live on costs a
// tenth of a large compile, and giving back to the system what is asked for again right away nearly
// as much.
void FitAllocatorToModels() {
  if (std::getenv("GLIBC_TUNABLES") != nullptr) return;  // somebody else's choice
  constexpr int kLargest = 32 << 20;                     // that may be set
  mallopt(M_MXFAST, 0);
  mallopt(M_MMAP_THRESHOLD, kLargest);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

// Ends the process at once: what it holds, the system takes back in no time. Where leaks are looked
// for it ends as others do.
[[noreturn]] void End(ExitStatus status) {
#ifdef __SANITIZE_ADDRESS__
  std::exit(static_cast<int>(status));
#else
  _exit(static_cast<int>(status));
#endif
}

}  // namespace

int main(int argc, char** argv) {
  FitAllocatorToModels();
  rux::OccupyStandardStreams();
  // A file that gets too large is a failed write like any other. A pipe that nobody reads any more
  // is not: as usual for a command in a pipeline, it ends this one without a word.
  std::signal(SIGXFSZ, SIG_IGN);
  End(rux::RunToTheEnd([&] { return Run(argc, argv); }));
}
