#include "compiled/debug_source.h"

#include <cstddef>
#include <cstdint>

#include "compiled/file_header.h"
#include "compiled/words.h"

namespace rux::compiled {
namespace {

// The offset behind the text whose length stands at `at`.
std::size_t EndOfText(const std::string& bytes, std::size_t at) {
  return at + kWordSize + LoadWord(&bytes[at]);
}

std::size_t EndOfWords(const std::string& bytes, std::size_t at) {
  const std::uint32_t count = LoadWord(&bytes[at]);
  at += kWordSize;
  for (std::uint32_t i = 0; i < count; ++i) at = EndOfText(bytes, at) + kWordSize;
  return at;
}

}  // namespace

void RenameScript(std::string& bytes, std::string_view path) {
  const std::size_t kinds = EndOfWords(bytes, kHeaderEnd);
  if (LoadWord(&bytes[kinds]) == 0) return;
  // The list stands behind the name in the object of the first section of the first kind.
  const std::size_t section = kinds + 2 * kWordSize;
  const std::size_t object = section + kWordSize;
  constexpr std::size_t kBeforeName = 5 * kWordSize;  // the object's length and four words
  const std::size_t first = EndOfText(bytes, object + kBeforeName) + kWordSize;
  const std::uint32_t length = LoadWord(&bytes[first]);
  const auto growth = static_cast<std::uint32_t>(path.size()) - length;
  for (const std::size_t at : {section, object, first}) {
    StoreWord(LoadWord(&bytes[at]) + growth, &bytes[at]);
  }
  bytes.replace(first + kWordSize, length, path);
}

}  // namespace rux::compiled
