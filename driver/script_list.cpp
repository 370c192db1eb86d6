#include "driver/script_list.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "diagnostics/report.h"
#include "driver/compile_options.h"
#include "driver/listed.h"
#include "reader/include_folders.h"
#include "sources/allow_comments.h"
#include "sources/machine_files.h"
#include "sources/main_scripts.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/input_file.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"

namespace rux::driver {
namespace {

constexpr char kListMark = '@';

support::Failure WrongUsage(const char* text, const std::string& name) {
  return support::Failure(support::ExitStatus::kWrongUsage, "{} {}", text, name);
}

support::Failure NoScripts(const std::string& folder) {
  return WrongUsage("there are no scripts (*.rux) below", folder);
}

// The header of a main script may be misspelt.
void ReportUnused(const std::string& folder, const sources::FolderScripts& found) {
  constexpr std::size_t kMost = 3;
  std::vector<std::string> scripts;
  for (const auto& [script, mains] : found.mains_of) {
    if (mains.empty()) scripts.push_back(script);
  }
  if (scripts.empty()) return;
  support::PrintError(support::SafeFormat(
      "rux: note: skipped (no MORVRUX section, and no main script below {} includes it): {}\n",
      folder, Listed(scripts, kMost)));
}

// To people, not to programs.
bool ReportsUnused(const CompileOptions& options) {
  return options.reporting.format == "human" || !options.reporting.file.empty();
}

// Of a folder that holds other machines, there may be none.
std::vector<std::string> MainScriptsBelow(const std::string& folder, const CompileOptions& options,
                                          bool has_others = false) {
  const sources::FolderScripts scripts = sources::ScriptsBelow(folder);
  if (!scripts.mains.empty()) {
    if (ReportsUnused(options)) ReportUnused(folder, scripts);
    for (const auto& [part, mains] : scripts.mains_of) {
      if (mains.size() > 1 && sources::Mentions(part, sources::kAllowMarker))
        (*options.shared_parts)[part] = mains;
    }
    return scripts.mains;
  }
  if (has_others) return {};
  if (scripts.others.empty()) throw NoScripts(folder);
  throw support::Failure(
      support::ExitStatus::kWrongUsage,
      "there are no main scripts below {}: no script there, such as {}, has a MORVRUX section",
      folder, scripts.others.front());
}

std::vector<std::string> AllScriptsBelow(const std::string& folder) {
  sources::FolderScripts scripts = sources::ScriptsBelow(folder);
  std::vector<std::string> all = std::move(scripts.mains);
  all.insert(all.end(), scripts.others.begin(), scripts.others.end());
  if (all.empty()) throw NoScripts(folder);
  std::sort(all.begin(), all.end());
  return all;
}

std::string Trimmed(const std::string& line) {
  constexpr const char* kBlanks = " \t\r";
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == std::string::npos) return "";
  return line.substr(begin, line.find_last_not_of(kBlanks) - begin + 1);
}

std::vector<std::string> LinesOf(const std::string& list) {
  constexpr std::size_t kLargestList = std::size_t{256} << 20;
  const bool is_input = list == support::kStandardInput;
  const std::string name = is_input ? "standard input" : list;
  const support::Descriptor file = support::OpenInput(list);
  std::string text;
  if (!support::ReadAll(file.number(), kLargestList, text))
    throw support::SystemFailure("cannot read", name);
  if (text.size() > kLargestList) throw support::SystemFailure("cannot read", name, EFBIG);
  std::vector<std::string> lines;
  std::istringstream rest(text);
  for (std::string line; std::getline(rest, line);) {
    line = Trimmed(line);
    if (!line.empty() && line.front() != '#') lines.push_back(std::move(line));
  }
  if (lines.empty()) throw WrongUsage("no scripts are listed in", name);
  return lines;
}

class ScriptList {
 public:
  using ScriptsBelow = std::function<std::vector<std::string>(const std::string& folder)>;
  explicit ScriptList(ScriptsBelow scripts_below) : scripts_below_(std::move(scripts_below)) {}

  void Add(const std::string& argument) {
    if (argument.front() != kListMark) return AddNamed(argument);
    is_list_ = true;
    if (argument.size() == 1) {
      throw support::Failure(support::ExitStatus::kWrongUsage, "@ needs the name of a file");
    }
    for (const std::string& line : LinesOf(argument.substr(1))) {
      // In a list, every name is that of a file.
      AddNamed(line == CompileOptions::kStandardInput ? "./" + line : line);
    }
  }

  void MoveTo(CompileOptions& options) {
    options.scripts = std::move(scripts_);
    options.is_list = is_list_;
  }

 private:
  void AddNamed(const std::string& name) {
    std::error_code none_there;
    if (!std::filesystem::is_directory(name, none_there)) return AddScript(name);
    is_list_ = true;
    for (const std::string& script : scripts_below_(name)) AddScript(script);
  }

  // One that is given again does not count, but is one of several.
  void AddScript(const std::string& script) {
    if (known_.insert(script).second) {
      scripts_.push_back(script);
    } else {
      is_list_ = true;
    }
  }

  const ScriptsBelow scripts_below_;
  std::vector<std::string> scripts_;
  std::set<std::string> known_;
  bool is_list_ = false;
};

void Expand(CompileOptions& options, ScriptList list) {
  const ruxcomp::reader::IncludeFolders folders(options.include_folders);
  for (const std::string& argument : options.scripts) list.Add(argument);
  list.MoveTo(options);
}

}  // namespace

void ExpandScripts(CompileOptions& options) {
  Expand(options,
         ScriptList([&](const std::string& folder) { return MainScriptsBelow(folder, options); }));
}

void ExpandMachines(CompileOptions& options) {
  Expand(options, ScriptList([&](const std::string& folder) {
           std::vector<std::string> files = sources::CompiledFilesBelow(folder);
           const std::vector<std::string> scripts =
               MainScriptsBelow(folder, options, !files.empty());
           files.insert(files.end(), scripts.begin(), scripts.end());
           return sources::OneOfEachMachine(files);
         }));
}

void AddSharedParts(CompileOptions& options) {
  for (const std::string& given : options.scripts) options.shared_parts->erase(given);
  for (const auto& [part, mains] : *options.shared_parts) options.scripts.push_back(part);
}

void ExpandAllScripts(CompileOptions& options) { Expand(options, ScriptList(AllScriptsBelow)); }

}  // namespace rux::driver
