#include "tool/compile/overwriting.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include "tool/failure.h"

namespace rux {
namespace {

namespace fs = std::filesystem;

// The one name of a file, whether it is there already or not; empty when it cannot be told.
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

}  // namespace

void RefuseToOverwrite(const NamedFile& kept, const NamedFile& written) {
  if (!IsOneFile(kept.path, written.path)) return;
  throw Failure(ExitStatus::kWrongUsage, fmt::format("the {} would overwrite the {} {}",
                                                     written.what, kept.what, kept.path));
}

}  // namespace rux
