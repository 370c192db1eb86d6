#include "driver/overwriting.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <vector>

#include "compiled/debug_meta.h"
#include "compiled/file.h"  // IWYU pragma: keep
#include "compiled/meta.h"
#include "ruxcomp/file/header.h"
#include "sources/source_set.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/placement.h"

namespace rux::driver {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestMagic = 16;

// The one name of a file, whether it is there already or not; empty when it is unknown.
fs::path WholeName(const std::string& path) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(fs::absolute(path, error), error);
  return error ? fs::path() : whole;
}

bool IsOneFile(const std::string& path, const std::string& other) {
  std::error_code none_there;
  if (fs::is_other(path, none_there)) return false;
  if (fs::equivalent(path, other, none_there)) return true;
  const fs::path whole = WholeName(path);
  return !whole.empty() && whole == WholeName(other);
}

// Whether there is a file that is neither empty nor compiled. Pipes and devices lose nothing.
bool HoldsSomethingElse(const std::string& path) {
  std::error_code none_there;
  if (!fs::is_regular_file(path, none_there)) return false;
  const support::Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  std::string beginning;
  // What cannot be looked at is kept.
  if (!file.is_open() || !support::ReadAll(file.number(), kLongestMagic, beginning)) return true;
  return !beginning.empty() && !compiled::IsMetaBytes(beginning) &&
         !compiled::IsDebugMetaBytes(beginning);
}

support::Failure WouldOverwrite(const NamedFile& kept, const NamedFile& written) {
  const auto owner_of = [](const NamedFile& file) {
    return file.script == nullptr ? "" : " of " + *file.script;
  };
  return support::Failure(support::ExitStatus::kWrongUsage, "the {}{} would overwrite the {}{} {}",
                          written.what, owner_of(written), kept.what,
                          owner_of(kept) + (kept.script == nullptr ? "" : ","), kept.path);
}

}  // namespace

void RefuseToOverwrite(const NamedFile& kept, const NamedFile& written) {
  if (IsOneFile(kept.path, written.path)) throw WouldOverwrite(kept, written);
}

void RefuseToWriteTwice(const std::vector<NamedFile>& kept, const std::vector<NamedFile>& written) {
  // Comparing each with each takes too long for many.
  std::map<fs::path, const NamedFile*> by_name;
  for (const NamedFile& file : kept) by_name.emplace(WholeName(file.path), &file);
  for (const NamedFile& file : written) {
    const auto [place, is_new] = by_name.emplace(WholeName(file.path), &file);
    if (!is_new && !place->first.empty()) throw WouldOverwrite(*place->second, file);
  }
}

void KeepSources(const sources::SourceFiles& sources, const NamedFile& written) {
  for (const std::string& path : sources.paths) RefuseToOverwrite({"script", path}, written);
}

void RefusePossibleSource(const NamedFile& written) {
  if (!HoldsSomethingElse(written.path)) return;
  throw support::Failure(support::ExitStatus::kTrouble,
                         "the {} would overwrite {}, which is not compiled\nIt may be a file "
                         "that the script includes: the script cannot be read again to find out",
                         written.what, written.path);
}

bool HasSameContent(const support::NewFile& file, bool counts_time) {
  const support::Descriptor there(
      open(file.path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status;
  if (!there.is_open() || fstat(there.number(), &status) != 0) return false;
  const bool may_be_same =
      S_ISREG(status.st_mode) && static_cast<std::size_t>(status.st_size) == file.bytes.size();
  std::string bytes;
  if (!may_be_same || !support::ReadAll(there.number(), file.bytes.size(), bytes)) return false;
  return bytes == file.bytes || (!counts_time && compiled::AreSameButForTime(bytes, file.bytes));
}

}  // namespace rux::driver
