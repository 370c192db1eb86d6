#include "driver/standard_input.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <system_error>

#include "reader/script_file.h"
#include "sources/script_path.h"
#include "support/failure.h"

namespace rux::driver {
namespace {

namespace fs = std::filesystem;

support::Failure CannotRead(const std::string& name, int error) {
  return support::SystemFailure("cannot read", sources::ToOpenablePath(name), error);
}

support::Descriptor ReadIntoMemory(const std::string& name) {
  support::Descriptor file(memfd_create("rux", MFD_CLOEXEC));
  std::string text;
  if (!file.is_open() || !support::ReadAll(STDIN_FILENO, reader::kLargestScript, text)) {
    throw CannotRead(name, errno);
  }
  if (text.size() > reader::kLargestScript) throw CannotRead(name, EFBIG);
  if (!support::WriteAll(file.number(), text)) throw CannotRead(name, errno);
  return file;
}

// From the folder of `name` up to the root and down again.
std::string PathFromFolder(const std::string& name, const std::string& path) {
  const std::string folder = sources::FolderOf(name);
  if (folder.empty()) return path;
  std::error_code error;
  const fs::path whole = fs::canonical(sources::ToOpenablePath(folder), error);
  if (error) throw CannotRead(name, error.value());
  std::string way_up = folder;
  for (auto step = std::next(whole.begin()); step != whole.end(); ++step) way_up += "../";
  return way_up + path.substr(1);
}

}  // namespace

StandardInput::StandardInput(const std::string& name)
    : name_(name),
      file_(ReadIntoMemory(name)),
      path_("/proc/self/fd/" + std::to_string(file_.number())),
      library_path_(PathFromFolder(name, path_)) {}

void StandardInput::NameIn(std::vector<diagnostics::Message>& messages) const {
  const std::string taken = sources::BaseNameOf(library_path_);
  for (diagnostics::Message& message : messages) {
    for (diagnostics::Argument& argument : message.arguments) {
      if (argument == diagnostics::Argument(taken)) argument = sources::BaseNameOf(name_);
    }
  }
}

}  // namespace rux::driver
