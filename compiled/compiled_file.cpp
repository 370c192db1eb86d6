#include "compiled/compiled_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "compiled/verify.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/kept_bytes.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/input_file.h"
#include "support/signals.h"

namespace rux::compiled {
namespace {

// Of a regular file that is read from its begin on; none of any other. Most often right, never to
// be relied on.
std::optional<std::size_t> LikelySize(const support::Descriptor& file) {
  struct stat status;
  const bool is_file = fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode) &&
                       lseek(file.number(), 0, SEEK_CUR) == 0;
  if (!is_file) return std::nullopt;
  return static_cast<std::size_t>(status.st_size);
}

std::string ReadWhole(const support::Descriptor& file, const std::string& path) {
  std::string bytes;
  bytes.reserve(std::min(LikelySize(file).value_or(0), kLargestFile));
  if (!support::ReadAll(file.number(), kLargestFile, bytes))
    throw support::SystemFailure("cannot load", path);
  if (bytes.size() > kLargestFile) throw TooLarge("cannot load", path);
  return bytes;
}

// A debug meta file where a meta file is wanted, or the other way round.
support::Failure WrongForm(const std::string& path, Form form) {
  const char* commands = form == Form::kMeta ? "ls, get, dump and verify"
                                             : "ls, get, where, decompile, dump and verify";
  return support::Failure(support::ExitStatus::kTrouble, "{} is a {}; rux {} read it", path,
                          FormName(form), commands);
}

}  // namespace

support::Failure TooLarge(const char* what, const std::string& path) {
  return support::Failure(support::ExitStatus::kTrouble, "{} {}: it is larger than {} MiB", what,
                          path, kLargestFile >> 20);
}

std::string ReadWholeFile(const std::string& path) {
  return ReadWhole(support::OpenInput(path), path);
}

void MapWholeFile(const std::string& path, KeptBytes& bytes) {
  const support::Descriptor file = support::OpenInput(path);
  const std::optional<std::size_t> size = LikelySize(file);
  const bool is_mapped =
      size && *size >= kLeastMapped && *size <= kLargestFile && bytes.Map(file.number(), *size);
  if (!is_mapped) return bytes.Keep(ReadWhole(file, path));
  support::ReportShortenedFiles();
}

void ExpectForm(const std::string& path, std::string_view bytes, Form wanted) {
  const Form form = FormOf(bytes);
  if (form == Form::kNone) throw Unsound(path, bytes);
  if (form != wanted) throw WrongForm(path, form);
}

support::Failure Unsound(const std::string& path, std::string_view bytes) {
  const Faults faults = Verify(bytes);
  const std::string cause = LikelyCause(bytes, faults);
  // Where a foreign file differs helps no user.
  const bool is_foreign = FormOf(bytes) == Form::kNone;
  const std::string fault =
      is_foreign ? faults.list().front().reason : FaultText(faults.list().front());
  std::string text = fault;
  if (!cause.empty()) text = is_foreign ? fault + "; " + cause : cause + " (" + fault + ')';
  return support::Failure(support::ExitStatus::kTrouble, "cannot load {}: {}", path, text);
}

CompiledFile::CompiledFile(const std::string& path)
    : path_(path), bytes_(ReadWholeFile(path)), form_(FormOf(bytes_)) {
  ExpectSound();
}

CompiledFile::CompiledFile(const std::string& path, Form wanted)
    : path_(path), bytes_(ReadWholeFile(path)), form_(FormOf(bytes_)) {
  ExpectForm(path_, bytes_, wanted);
  ExpectSound();
}

void CompiledFile::ExpectSound() {
  const Faults faults = Verify(bytes_, &summary_);
  if (!faults.empty()) throw Unsound(path_, bytes_);
}

}  // namespace rux::compiled
