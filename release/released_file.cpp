#include "release/released_file.h"

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "compiled/compiled_file.h"
#include "compiled/verify.h"
#include "release/manifest.h"
#include "ruxcomp/file/header.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/input_file.h"
#include "support/sha256.h"

namespace rux::release {
namespace {

using ruxcomp::file::Form;

bool IsCalledCompiled(const std::string& path) {
  const std::filesystem::path extension = std::filesystem::path(path).extension();
  return extension == ".meta" || extension == ".metad";
}

}  // namespace

ReleasedFile::ReleasedFile(const std::string& path) : path_(path) {
  constexpr std::size_t kEnough = 64;  // to see the form
  const support::Descriptor file = support::OpenInput(path);
  const auto read_to = [&](std::size_t most) {
    if (!support::ReadAll(file.number(), most, bytes_))
      throw support::SystemFailure("cannot load", path);
  };
  read_to(kEnough);
  is_compiled_ = ruxcomp::file::FormOf(bytes_) != Form::kNone || IsCalledCompiled(path);
  if (is_compiled_) read_to(compiled::kLargestFile);
  if (bytes_.size() > compiled::kLargestFile) throw compiled::TooLarge("cannot load", path);
  support::Sha256 sha256;
  sha256.Add(bytes_);
  std::array<char, std::size_t{1} << 16> piece;
  while (!is_compiled_) {
    const ssize_t count = support::ReadPiece(file.number(), piece.data(), piece.size());
    if (count < 0) throw support::SystemFailure("cannot load", path);
    if (count == 0) break;
    sha256.Add({piece.data(), static_cast<std::size_t>(count)});
  }
  digest_ = sha256.End();
}

const char* ReleasedFile::form() const {
  switch (ruxcomp::file::FormOf(bytes_)) {
    case Form::kMeta:
      return kMetaForm;
    case Form::kDebugMeta:
      return kDebugMetaForm;
    default:
      return "";
  }
}

std::optional<std::uint32_t> ReleasedFile::CreationTime() const {
  if (!is_compiled_) return std::nullopt;
  compiled::Summary summary;
  if (!compiled::Verify(bytes_, &summary).empty()) throw compiled::Unsound(path_, bytes_);
  return summary.creation_time;
}

}  // namespace rux::release
