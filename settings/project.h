// The project file: what every run of rux over a tree of scripts goes by.
//
//   docs/project.schema.json
#ifndef SETTINGS_PROJECT_H_
#define SETTINGS_PROJECT_H_

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/limit_rule.h"
#include "settings/lint_settings.h"

namespace rux::settings {

inline constexpr char kProjectFile[] = ".rux.json";

struct Project {
  std::string path;                          // as it can be opened, like the paths below
  std::vector<std::string> warnings;         // each as -W takes it
  std::vector<std::string> include_folders;  // in the order of the search
  // Names and patterns with the lines that they are on; see MainScriptsOf().
  std::vector<std::pair<std::string, std::uint32_t>> main_scripts;
  std::vector<LimitRule> limits;  // the first one that fits a sensor and says so counts
  LintSettings lint = {};
  std::string profile = {};  // the file of the profile; empty: none
};

// Returns why a text is no value for -W; empty when it is one.
using CheckWarnings = std::function<std::string(const std::string& text)>;

// Throws a Failure that names the line of what is wrong with the text of a project file at `path`.
Project ParseProject(const std::string& path, std::string_view text, const CheckWarnings& check);

// The scripts that the project names, sorted, each once. Throws a Failure when a name or a pattern
// fits no file.
std::vector<std::string> MainScriptsOf(const Project& project);

// Which project files are used.
struct ProjectChoice {
  std::string path;  // this one for all scripts; empty: the nearest one of each
  bool has_none = false;
};

// The project files of the scripts of a run, each read once.
class Projects {
 public:
  Projects(ProjectChoice choice, CheckWarnings check)
      : choice_(std::move(choice)), check_(std::move(check)) {}

  // The one in the folder or, upwards from there, in the nearest one that has any; null when there
  // is none up to the top of a repository. Throws a Failure.
  std::shared_ptr<const Project> For(const std::string& folder);

 private:
  std::shared_ptr<const Project> Read(const std::string& path);

  const ProjectChoice choice_;
  const CheckWarnings check_;
  std::map<std::string, std::shared_ptr<const Project>> by_folder_;
  std::map<std::string, std::shared_ptr<const Project>> by_path_;
};

}  // namespace rux::settings

#endif  // SETTINGS_PROJECT_H_
