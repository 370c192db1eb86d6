#include "sources/content.h"

#include <cstddef>
#include <string_view>

#include "ruxcomp/language/file_format.h"

namespace rux::sources {
namespace {

namespace language = ruxcomp::language;

template <std::size_t kSize>
bool BeginsWithMagic(std::string_view bytes, const char (&magic)[kSize]) {
  return bytes.substr(0, kSize) == std::string_view(magic, kSize);
}

bool BeginsWith(std::string_view bytes, std::string_view beginning) {
  return bytes.substr(0, beginning.size()) == beginning;
}

// Two ASCII characters in UTF-16, in either order of bytes.
bool LooksLikeUtf16(std::string_view bytes) {
  if (bytes.size() < 4 || bytes.size() % 2 != 0) return false;
  const bool first = bytes[0] == '\0' && bytes[2] == '\0';
  const bool second = bytes[1] == '\0' && bytes[3] == '\0';
  return first != second;
}

}  // namespace

std::string_view WhyNotAScript(std::string_view bytes) {
  if (BeginsWithMagic(bytes, language::meta_format::kMagic)) {
    return "this is a compiled meta file, not a script";
  }
  if (BeginsWithMagic(bytes, language::debug_meta_format::kMagic)) {
    return "this is a debug meta file, not a script; 'rux decompile' turns it into a script";
  }
  const bool has_mark = BeginsWith(bytes, "\xFF\xFE") || BeginsWith(bytes, "\xFE\xFF");
  if (has_mark || LooksLikeUtf16(bytes)) return "this is UTF-16 text; save it as UTF-8";
  return {};
}

}  // namespace rux::sources
