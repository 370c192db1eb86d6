#include "sources/content.h"

#include <algorithm>
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

// An ASCII character in UTF-32, in either order of bytes, or the mark of that order before it.
bool LooksLikeUtf32(std::string_view bytes) {
  using namespace std::string_view_literals;
  if (bytes.size() < 4 || bytes.size() % 4 != 0) return false;
  if (BeginsWith(bytes, "\xFF\xFE\0\0"sv) || BeginsWith(bytes, "\0\0\xFE\xFF"sv)) return true;
  return (bytes[0] != '\0') != (bytes[3] != '\0') && bytes.substr(1, 2) == "\0\0"sv;
}

// Two ASCII characters in UTF-16, in either order of bytes.
bool LooksLikeUtf16(std::string_view bytes) {
  if (bytes.size() < 4 || bytes.size() % 2 != 0) return false;
  const bool first = bytes[0] == '\0' && bytes[2] == '\0';
  const bool second = bytes[1] == '\0' && bytes[3] == '\0';
  return first != second;
}

// Of a byte of ASCII that texts do not have: neither a character nor a blank nor a line end.
bool IsControl(char c) { return (c >= 0 && c < '\t') || (c > '\r' && c < ' ') || c == 0x7F; }

// Whether a good part of the beginning is control characters, far more than a slip puts into a
// text: of random bytes, a tenth is. Without a zero, it may be a text of any kind.
bool LooksBinary(std::string_view bytes) {
  constexpr std::size_t kLooked = 4096;
  constexpr std::ptrdiff_t kFewest = 16;
  const std::string_view beginning = bytes.substr(0, kLooked);
  if (beginning.find('\0') == std::string_view::npos) return false;
  const std::ptrdiff_t controls = std::count_if(beginning.begin(), beginning.end(), IsControl);
  return controls >= kFewest && static_cast<std::size_t>(controls) >= beginning.size() / 20;
}

}  // namespace

std::string_view WhyNotAScript(std::string_view bytes) {
  if (BeginsWithMagic(bytes, language::meta_format::kMagic)) {
    return "this is a compiled meta file, not a script";
  }
  if (BeginsWithMagic(bytes, language::debug_meta_format::kMagic)) {
    return "this is a debug meta file, not a script; 'rux decompile' turns it into a script";
  }
  if (LooksLikeUtf32(bytes)) return "this is UTF-32 text; save it as UTF-8";
  const bool has_mark = BeginsWith(bytes, "\xFF\xFE") || BeginsWith(bytes, "\xFE\xFF");
  if (has_mark || LooksLikeUtf16(bytes)) return "this is UTF-16 text; save it as UTF-8";
  if (LooksBinary(bytes)) return "this is binary data, not a script";
  return {};
}

}  // namespace rux::sources
