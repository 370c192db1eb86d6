#include "machine/source.h"

#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/compiled_file.h"
#include "machine/git.h"
#include "reader/texts.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/kept_bytes.h"
#include "sources/machine_files.h"
#include "sources/main_scripts.h"
#include "support/failure.h"

namespace rux::machine {
namespace {

namespace fs = std::filesystem;

// A path that begins with ./ or ../ is relative to the working folder, as git has it; any other to
// the top of the repository.
std::string PathFromHere(const std::string& folder, const std::string& path) {
  const bool is_from_here = path.rfind("./", 0) == 0 || path.rfind("../", 0) == 0;
  if (is_from_here || folder.empty()) return fs::path(path).lexically_normal().string();
  return fs::path(path).lexically_relative(folder).string();
}

Source ReadRevision(const std::string& name, std::size_t colon) {
  Source source{name,
                "",
                name.substr(0, colon),
                FolderInRepository(),
                std::make_unique<ruxcomp::file::KeptBytes>(),
                ruxcomp::file::Form::kNone};
  source.path = PathFromHere(source.folder, name.substr(colon + 1));
  const std::string path = PathInRepository(source.folder, source.path);
  GitRevision git(source.revision);
  std::optional<std::string> bytes = git.Read(path);
  if (!bytes && git.HasFolder(path)) {
    throw support::Failure(support::ExitStatus::kTrouble, "{} is a folder in revision {}", path,
                           source.revision);
  }
  if (!bytes) {
    throw support::Failure(support::ExitStatus::kTrouble, "git has no file {} in revision {}", path,
                           source.revision);
  }
  source.bytes->Keep(std::move(*bytes));
  return source;
}

}  // namespace

Source ReadSource(const std::string& name) {
  const std::size_t colon = name.find(':');
  const bool names_revision =
      colon != std::string::npos && colon > 0 && access(name.c_str(), F_OK) != 0;
  Source source = names_revision ? ReadRevision(name, colon)
                                 : Source{name,
                                          name,
                                          "",
                                          "",
                                          std::make_unique<ruxcomp::file::KeptBytes>(),
                                          ruxcomp::file::Form::kNone};
  source.is_missing = name == "/dev/null";
  if (!names_revision && !source.is_missing) compiled::MapWholeFile(name, *source.bytes);
  const std::string_view bytes = source.bytes->view();
  if (bytes.empty() && !source.is_missing)
    throw support::Failure(support::ExitStatus::kTrouble, "{} is empty", name);
  source.form = ruxcomp::file::FormOf(bytes);
  const bool is_script = bytes.find('\0') == std::string_view::npos;
  if (source.form == ruxcomp::file::Form::kNone && !is_script) throw compiled::Unsound(name, bytes);
  return source;
}

std::vector<std::string> MachinesOfRevision(const std::string& name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string::npos || colon == 0)
    throw support::Failure(support::ExitStatus::kWrongUsage, "no such folder: {}", name);
  const std::string here = FolderInRepository();
  const std::string folder = PathInRepository(here, PathFromHere(here, name.substr(colon + 1)));
  const bool has_separator = name.back() == ':' || name.back() == '/';
  const std::string lead = has_separator ? name : name + '/';
  GitRevision git(name.substr(0, colon));
  std::vector<std::string> machines;
  for (const std::string& path : git.FilesBelow(folder)) {
    const sources::FileForm form = sources::FormByName(path);
    if (form == sources::FileForm::kOther) continue;
    const bool is_script = form == sources::FileForm::kScript;
    if (is_script && !sources::HasMainHeader(git.Read(path).value_or(""))) continue;
    machines.push_back(lead + fs::path(path).lexically_relative(folder).string());
  }
  if (machines.empty()) {
    throw support::Failure(support::ExitStatus::kWrongUsage, "git has no machines in {}", name);
  }
  return sources::OneOfEachMachine(machines);
}

void ReadScriptsOf(const Source& source) {
  if (source.revision.empty()) return;
  const auto git = std::make_shared<GitRevision>(source.revision);
  ruxcomp::reader::Texts::ReplaceFiles([git, folder = source.folder](const std::string& path) {
    return git->Read(PathInRepository(folder, path));
  });
}

}  // namespace rux::machine
