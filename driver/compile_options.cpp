#include "driver/compile_options.h"

#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "diagnostics/severities.h"
#include "driver/messages.h"
#include "reader/script.h"
#include "ruxcomp/language/paths.h"
#include "settings/project.h"
#include "sources/source_file.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/safe_text.h"

namespace rux::driver {

namespace {

namespace fs = std::filesystem;

// Of several that fit, the last one counts.
std::optional<std::string> Mapped(const std::vector<std::string>& prefix_map,
                                  const std::string& path) {
  for (auto each = prefix_map.rbegin(); each != prefix_map.rend(); ++each) {
    const std::size_t equals = each->find('=');
    if (path.compare(0, equals, *each, 0, equals) != 0) continue;
    return ruxcomp::language::ToLibraryPath(each->substr(equals + 1) + path.substr(equals));
  }
  return std::nullopt;
}

// The path that leads from the folder to the file. Through a link to a folder, that depends on
// where the link leads.
std::string RelativeTo(const fs::path& folder, const fs::path& file) {
  std::error_code error;
  const fs::path relative = fs::absolute(file).lexically_normal().lexically_relative(
      fs::absolute(folder).lexically_normal());
  if (fs::equivalent(folder / relative, file, error)) return relative.string();
  const fs::path resolved = fs::relative(file, folder, error);
  return (error ? relative : resolved).string();
}

support::Failure CannotRead(const std::string& name, int error) {
  return support::SystemFailure("cannot read", sources::ToOpenablePath(name), error);
}

void ExpectFolderOf(const std::string& name) {
  const std::string folder(ruxcomp::language::FolderOf(name));
  if (folder.empty()) return;
  std::error_code error;
  if (fs::is_directory(sources::ToOpenablePath(folder), error)) return;
  throw CannotRead(name, error ? error.value() : ENOTDIR);
}

}  // namespace

std::string CompileOptions::script_name() const {
  if (!reads_standard_input()) return ruxcomp::language::ToLibraryPath(scripts.front());
  return stdin_name.empty() ? "<stdin>" : ruxcomp::language::ToLibraryPath(stdin_name);
}

std::string CompileOptions::project_file() const { return project == nullptr ? "" : project->path; }

std::vector<std::string> CompileOptions::all_include_folders() const {
  std::vector<std::string> folders = include_folders;
  if (project != nullptr) {
    const std::vector<std::string>& more = project->include_folders;
    folders.insert(folders.end(), more.begin(), more.end());
  }
  return folders;
}

// Without a map that fits, only the name is left: whatever the script includes is then called
// relative to its folder.
std::string CompileOptions::stored_name() const {
  std::string name = script_name();
  if (!stores_paths) return name;
  const auto mapped = Mapped(prefix_map, ruxcomp::language::WithSlashes(name));
  return mapped ? *mapped : std::string(ruxcomp::language::BaseNameOf(name));
}

std::string CompileOptions::stored_path(const std::string& found) const {
  if (!stores_paths) return found;
  const std::string path = ruxcomp::language::WithSlashes(found);
  if (const auto mapped = Mapped(prefix_map, path)) return *mapped;
  const std::string folder(ruxcomp::language::FolderOf(script_name()));
  return ruxcomp::language::ToLibraryPath(
      RelativeTo(folder.empty() ? "." : sources::ToOpenablePath(folder), path));
}

std::shared_ptr<settings::Projects> ProjectsOf(const settings::ProjectChoice& choice) {
  return std::make_shared<settings::Projects>(choice, [](const std::string& text) {
    return diagnostics::Severities(AllMessages()).Set(text);
  });
}

void UseProject(CompileOptions& options) {
  if (options.projects == nullptr) options.projects = ProjectsOf(options.project_choice);
  const bool has_name = !options.reads_standard_input() || !options.stdin_name.empty();
  const std::string script = has_name ? sources::ToOpenablePath(options.script_name()) : "";
  options.project = options.projects->For(fs::path(script).parent_path().string());
}

std::string ReadStandardInput(const std::string& name) {
  std::string text;
  if (!support::ReadAll(STDIN_FILENO, ruxcomp::reader::kLargestScript, text))
    throw CannotRead(name, errno);
  if (text.size() > ruxcomp::reader::kLargestScript) throw CannotRead(name, EFBIG);
  ExpectFolderOf(name);
  return text;
}

std::optional<std::uint32_t> SourceDateEpoch() {
  constexpr const char* kName = "SOURCE_DATE_EPOCH";
  const char* value = std::getenv(kName);
  // Some builds export the variable without a value.
  const std::string_view text = value != nullptr ? value : "";
  if (text.empty()) return std::nullopt;
  std::uint32_t time = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), time);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "{} is '{}'; it must be a whole number of seconds from 0 to {}", kName,
                           support::Shortened(text), std::numeric_limits<std::uint32_t>::max());
  }
  return time;
}

diagnostics::Severities SeveritiesOf(const CompileOptions& options) {
  diagnostics::Severities severities(AllMessages(), options.purpose);
  if (options.project != nullptr) {
    for (const std::string& setting : options.project->warnings) severities.Set(setting);
  }
  severities.EndProject();
  if (options.werror) severities.RaiseAll();
  for (const std::string& setting : options.warnings) severities.Set(setting);
  return severities;
}

}  // namespace rux::driver
