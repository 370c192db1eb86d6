#include "tests/tool/faults/verdict.h"

#include <string_view>

namespace {

Task MakeTask(const char* name, const Arguments& arguments, Contents before) {
  before.merge(Scripts());
  return {name, arguments, before, Done(before, arguments)};
}

Contents CompiledScript() {
  Contents all = Done(Scripts(), {"compile", "board.rux", "-g", "board.metad"});
  return {{"board.metad", all.at("board.metad")}};
}

// A script with errors still leaves the file that lists what it includes.
Contents WithDepfile(const Task& task) {
  Contents after = task.before;
  const auto depfile = task.done.find("board.d");
  if (depfile != task.done.end()) after[depfile->first] = depfile->second;
  return after;
}

bool Says(const Ended& ended, std::string_view text) {
  return ended.errors.find(text) != std::string::npos;
}

}  // namespace

const std::vector<Task>& Tasks() {
  static const std::vector<Task> tasks = {
      MakeTask("new file", {"compile", "board.rux"}, {}),
      MakeTask("new files", {"compile", "board.rux", "-g", "board.metad"}, {}),
      MakeTask("older files", {"compile", "board.rux", "-g", "board.metad", "--depfile", "board.d"},
               {{"board.meta", "older"}, {"board.metad", "older still"}, {"board.d", "oldest"}}),
      MakeTask("unchanged file", {"compile", "--if-changed", "board.rux", "-g", "board.metad"},
               {CompiledScript()}),
      MakeTask("standard input", {"compile", "-", "--stdin-name", "board.rux", "-o", "board.meta"},
               {}),
      MakeTask("script", {"decompile", "board.metad", "-o", "again.rux"}, CompiledScript()),
  };
  return tasks;
}

std::vector<Task> LongestTask() { return {Tasks().at(2)}; }

std::string WrongEnd(const Task& task, const Ended& ended, const Contents& after) {
  if (ended.exit_status == 0) {
    if (after != task.done) return "it says that it is done, but it is not";
    return Says(ended, "error: ") ? "it is done, but there was an error" : "";
  }
  if (after != task.before && (ended.exit_status != 1 || after != WithDepfile(task))) {
    return "it is not done, but something has changed";
  }
  if (ended.exit_status == 3) return Says(ended, "rux: error: ") ? "" : "no reason is given";
  if (ended.exit_status == 1) return Says(ended, "cannot include words.rux") ? "" : "what finding?";
  return "this is no end for a fault";
}
