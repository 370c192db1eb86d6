#include "driver/standard_input.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

#include "reader/script.h"
#include "ruxcomp/language/paths.h"
#include "sources/script_path.h"
#include "support/descriptor.h"
#include "support/failure.h"

namespace rux::driver {
namespace {

namespace fs = std::filesystem;

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

std::string ReadStandardInput(const std::string& name) {
  std::string text;
  if (!support::ReadAll(STDIN_FILENO, reader::kLargestScript, text)) throw CannotRead(name, errno);
  if (text.size() > reader::kLargestScript) throw CannotRead(name, EFBIG);
  ExpectFolderOf(name);
  return text;
}

}  // namespace rux::driver
