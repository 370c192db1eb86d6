#include "driver/output_names.h"

#include <fmt/format.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "driver/compile_options.h"
#include "sources/source_file.h"
#include "support/failure.h"

namespace rux::driver {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kName = "{}";
constexpr std::string_view kFolder = "{dir}";

bool IsOutside(const fs::path& folder) { return folder.empty() || *folder.begin() == ".."; }

// "." for the working folder.
fs::path FolderFromHere(const fs::path& script) {
  const fs::path here = fs::current_path();
  const fs::path folder = (here / script).lexically_normal().parent_path();
  fs::path seen = folder.lexically_relative(here);
  if (IsOutside(seen)) {
    // The way to it may be through a link.
    std::error_code unknown;
    const fs::path actual = fs::canonical(folder, unknown).lexically_relative(here);
    if (!IsOutside(actual)) seen = actual;
  }
  return seen;
}

std::string FolderIn(const std::string& name, std::size_t at, const fs::path& script) {
  const fs::path folder = FolderFromHere(script);
  if (at == 0 || !IsOutside(folder)) return folder.string();
  const fs::path above = name.substr(0, at);
  throw support::Failure(support::ExitStatus::kWrongUsage,
                         "{} has no folder below {}: it is not below the working folder",
                         script.string(),
                         (above.has_filename() ? above : above.parent_path()).string());
}

}  // namespace

std::string ExpandFileName(const std::string& script, const std::string& name) {
  const fs::path path = sources::ToOpenablePath(script);
  std::string whole;
  for (std::size_t at = 0; at < name.size();) {
    if (name.compare(at, kName.size(), kName) == 0) {
      whole += path.stem().string();
      at += kName.size();
    } else if (name.compare(at, kFolder.size(), kFolder) == 0) {
      const std::string folder = FolderIn(name, at, path);
      at += kFolder.size();
      if (folder != ".") {
        whole += folder;
      } else if (at < name.size() && name[at] == '/') {
        ++at;  // the working folder needs no name
      } else {
        whole += '.';
      }
    } else {
      whole += name[at++];
    }
  }
  return whole;
}

bool IsPerScript(const std::string& name) {
  return name.find(kName) != std::string::npos || HasScriptFolder(name);
}

bool HasScriptFolder(const std::string& name) { return name.find(kFolder) != std::string::npos; }

std::string NameBelow(const std::string& folder, const std::string& name) {
  if (fs::path(name).is_absolute()) {
    throw support::Failure(support::ExitStatus::kWrongUsage, "{} is not below the folder {}", name,
                           folder);
  }
  return (fs::path(folder) / kFolder / name).string();
}

void RequireNamePerScript(const CompileOptions& options, const char* option,
                          const std::string& name) {
  if (!options.are_several() || name.empty() || IsPerScript(name)) return;
  throw support::Failure(
      support::ExitStatus::kWrongUsage, "{}",
      fmt::format("with several scripts, {} needs {{}} or {{dir}} in the file name", option));
}

}  // namespace rux::driver
