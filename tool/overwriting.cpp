#include "tool/overwriting.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include "tool/failure.h"

namespace rux {
namespace {

namespace fs = std::filesystem;

bool IsOneFile(const std::string& path, const std::string& other) {
  std::error_code error;
  if (fs::is_other(path, error)) return false;
  if (fs::equivalent(path, other, error)) return true;
  // Nor may two names of a file that is not there yet be given.
  const fs::path whole_path = fs::weakly_canonical(path, error);
  if (error) return false;
  return whole_path == fs::weakly_canonical(other, error) && !error;
}

}  // namespace

void RefuseToOverwrite(const NamedFile& kept, const NamedFile& written) {
  if (!IsOneFile(kept.path, written.path)) return;
  throw Failure(ExitStatus::kWrongUsage, fmt::format("the {} would overwrite the {} {}",
                                                     written.what, kept.what, kept.path));
}

}  // namespace rux
