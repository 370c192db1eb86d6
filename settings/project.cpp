#include "settings/project.h"

#include <fmt/format.h>
#include <glob.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "settings/document.h"
#include "settings/json_file.h"
#include "settings/limit_rule.h"
#include "settings/lint_settings.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/safe_text.h"

namespace rux::settings {
namespace {

namespace fs = std::filesystem;

// More is no list that people write.
constexpr std::size_t kLargestProject = std::size_t{1} << 20;

enum ProjectMember : std::size_t {
  kSchema,
  kWarnings,
  kIncludeFolders,
  kMainScripts,
  kLimits,
  kLint,
  kProfile
};
constexpr Key kProjectKeys[] = {
    {"$schema", JsonValue::Kind::kString},        {"warnings", JsonValue::Kind::kArray},
    {"include_folders", JsonValue::Kind::kArray}, {"main_scripts", JsonValue::Kind::kArray},
    {"limits", JsonValue::Kind::kArray},          {"lint", JsonValue::Kind::kObject},
    {"profile", JsonValue::Kind::kString},
};

enum LimitMember : std::size_t {
  kSensors,
  kType,
  kUnit,
  kDivisor,
  kSign,
  kUnitProperty,
  kDivisorProperty,
  kSignProperty
};
constexpr Key kLimitKeys[] = {
    {"sensors", JsonValue::Kind::kString},
    {"type", JsonValue::Kind::kNumber},
    {"unit", JsonValue::Kind::kString},
    {"divisor", JsonValue::Kind::kNumber},
    {"sign", JsonValue::Kind::kString},
    {"unit_property", JsonValue::Kind::kString},
    {"divisor_property", JsonValue::Kind::kString},
    {"sign_property", JsonValue::Kind::kString},
};

// A path of the file, which is relative to the file's folder.
std::string PathFrom(const std::string& file, const std::string& path) {
  return (fs::path(file).parent_path() / path).string();
}

// The characters of a folder's name stand for themselves.
std::string EscapedForGlob(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (std::string_view("*?[\\").find(c) != std::string_view::npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// The files that a pattern fits.
std::vector<std::string> Expanded(const std::string& pattern) {
  glob_t found = {};
  std::vector<std::string> paths;
  if (glob(pattern.c_str(), GLOB_NOSORT, nullptr, &found) == 0) {
    for (std::size_t i = 0; i < found.gl_pathc; ++i) {
      std::error_code ignored;
      if (fs::is_regular_file(found.gl_pathv[i], ignored)) paths.emplace_back(found.gl_pathv[i]);
    }
  }
  globfree(&found);
  return paths;
}

std::string TextOf(const JsonValue* value) { return value == nullptr ? "" : value->text; }

// None when there is no value.
std::optional<std::uint64_t> CountOf(const Document& document, const JsonValue* value,
                                     std::string_view what, std::uint64_t least) {
  constexpr std::uint32_t kMost = 0xFFFFFFFF;
  if (value == nullptr) return std::nullopt;
  if (!value->number || *value->number < least || *value->number > kMost) {
    document.Refuse(value->line,
                    fmt::format("{} must be a whole number from {} to {}", what, least, kMost));
  }
  return value->number;
}

LimitRule LimitRuleOf(const Document& document, const JsonValue& item) {
  document.Expect(item, JsonValue::Kind::kObject, "a rule for limits");
  const std::vector<const JsonValue*> members = document.Members(item, kLimitKeys);
  LimitRule rule{TextOf(members[kSensors]),
                 CountOf(document, members[kType], "type", 0),
                 TextOf(members[kUnit]),
                 CountOf(document, members[kDivisor], "divisor", 1).value_or(0),
                 TextOf(members[kSign]),
                 TextOf(members[kUnitProperty]),
                 TextOf(members[kDivisorProperty]),
                 TextOf(members[kSignProperty])};
  if (!rule.sign.empty() && rule.sign != kSigned && rule.sign != kUnsigned) {
    document.Refuse(members[kSign]->line,
                    fmt::format("sign must be \"{}\" or \"{}\"", kSigned, kUnsigned));
  }
  return rule;
}

}  // namespace

Project ParseProject(const std::string& path, std::string_view text, const CheckWarnings& check) {
  const Document document(path, text);
  const std::vector<const JsonValue*> members = document.Members(document.root(), kProjectKeys);
  Project project{path, {}, {}, {}, {}};
  for (const auto& [setting, line] : document.StringsOf(members[kWarnings], "a warning level")) {
    const std::string trouble = check(setting);
    if (!trouble.empty()) document.Refuse(line, trouble);
    project.warnings.push_back(setting);
  }
  for (const auto& [folder, line] :
       document.StringsOf(members[kIncludeFolders], "an include folder")) {
    project.include_folders.push_back(PathFrom(path, folder));
  }
  project.main_scripts = document.StringsOf(members[kMainScripts], "a main script");
  if (members[kLimits] != nullptr) {
    for (const JsonValue& item : members[kLimits]->items)
      project.limits.push_back(LimitRuleOf(document, item));
  }
  const std::string profile = TextOf(members[kProfile]);
  if (!profile.empty()) project.profile = PathFrom(path, profile);
  if (members[kLint] != nullptr) project.lint = ParseLintSettings(document, *members[kLint]);
  return project;
}

std::vector<std::string> MainScriptsOf(const Project& project) {
  const std::string folder = EscapedForGlob(fs::path(project.path).parent_path().string());
  std::set<std::string> scripts;
  for (const auto& [pattern, line] : project.main_scripts) {
    const std::vector<std::string> found = Expanded((fs::path(folder) / pattern).string());
    if (found.empty()) {
      throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: no script matches {}",
                             project.path, line, support::Shortened(pattern));
    }
    scripts.insert(found.begin(), found.end());
  }
  return {scripts.begin(), scripts.end()};
}

std::shared_ptr<const Project> Projects::For(const std::string& folder) {
  if (choice_.has_none) return nullptr;
  if (!choice_.path.empty()) return Read(choice_.path);
  const auto known = by_folder_.find(folder);
  if (known != by_folder_.end()) return known->second;
  std::vector<std::string> passed;
  std::shared_ptr<const Project> found;
  for (fs::path at = folder;; at = support::FolderAbove(at)) {
    const auto above = by_folder_.find(at.string());
    if (above != by_folder_.end()) found = above->second;
    if (above != by_folder_.end()) break;
    passed.push_back(at.string());
    std::error_code ignored;
    const fs::path file = at / kProjectFile;
    if (fs::exists(file, ignored)) found = Read(file.string());
    if (found != nullptr || support::IsTopFolder(at)) break;
  }
  for (const std::string& each : passed) by_folder_.emplace(each, found);
  return found;
}

std::shared_ptr<const Project> Projects::Read(const std::string& path) {
  std::shared_ptr<const Project>& project = by_path_[path];
  if (project == nullptr) {
    const std::string text = ReadTextFile(path, kLargestProject);
    project = std::make_shared<const Project>(ParseProject(path, text, check_));
  }
  return project;
}

}  // namespace rux::settings
