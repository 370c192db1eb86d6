#include "driver/script_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "diagnostics/report.h"
#include "driver/compile_options.h"
#include "reader/include_folders.h"
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

// The header of a main script may be misspelt.
void ReportUnused(const std::string& folder, const std::vector<std::string>& scripts) {
  constexpr std::size_t kMost = 3;
  std::string names;
  for (std::size_t i = 0; i < std::min(scripts.size(), kMost); ++i) {
    names += (i == 0 ? "" : ", ") + scripts[i];
  }
  if (scripts.size() > kMost) names += fmt::format(" and {} more", scripts.size() - kMost);
  support::PrintError(support::SafeFormat(
      "rux: note: skipped (no MORVRUX section, and no main script below {} includes it): {}\n",
      folder, names));
}

std::vector<std::string> MainScriptsBelow(const std::string& folder, bool reports_unused) {
  const sources::FolderScripts scripts = sources::ScriptsBelow(folder);
  if (!scripts.mains.empty()) {
    if (!scripts.unused.empty() && reports_unused) ReportUnused(folder, scripts.unused);
    return scripts.mains;
  }
  if (scripts.others.empty()) throw WrongUsage("there are no scripts (*.rux) below", folder);
  throw support::Failure(
      support::ExitStatus::kWrongUsage,
      "there are no main scripts below {}: no script there, such as {}, has a MORVRUX section",
      folder, scripts.others.front());
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
  // `reports_unused`: people are told which scripts of folders are part of no machine.
  explicit ScriptList(bool reports_unused) : reports_unused_(reports_unused) {}

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
    if (!std::filesystem::is_directory(name, none_there)) return scripts_.push_back(name);
    is_list_ = true;
    const std::vector<std::string> scripts = MainScriptsBelow(name, reports_unused_);
    scripts_.insert(scripts_.end(), scripts.begin(), scripts.end());
  }

  const bool reports_unused_;
  std::vector<std::string> scripts_;
  bool is_list_ = false;
};

}  // namespace

void ExpandScripts(CompileOptions& options) {
  const ruxcomp::reader::IncludeFolders folders(options.include_folders);
  const diagnostics::ReportOptions& reporting = options.reporting;
  ScriptList list(reporting.format == "human" || !reporting.file.empty());
  for (const std::string& argument : options.scripts) list.Add(argument);
  list.MoveTo(options);
}

}  // namespace rux::driver
