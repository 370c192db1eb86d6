#include "support/json.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "support/safe_text.h"
#include "support/text_stream.h"
#include "support/utf8.h"

namespace rux::support {
namespace {

// In UTF-16, as JSON has it.
std::string EscapedCode(std::int32_t code) {
  constexpr std::int32_t kFirstOfPairs = 0x10000;
  if (code < kFirstOfPairs) return fmt::format("\\u{:04x}", code);
  const std::int32_t rest = code - kFirstOfPairs;
  return fmt::format("\\u{:04x}\\u{:04x}", 0xD800 + (rest >> 10), 0xDC00 + (rest & 0x3FF));
}

void Append(const Character& character, std::string& out) {
  constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  constexpr std::string_view kNames = "\"\\bfnrt";
  const std::size_t named = kNamed.find(character.bytes);
  if (named != std::string_view::npos) {
    out.append({'\\', kNames[named]});
  } else if (!character.is_valid()) {
    out += kReplacement;
  } else if (IsSafe(character)) {
    out += character.bytes;
  } else {
    out += EscapedCode(character.code);
  }
}

}  // namespace

std::string JsonString(std::string_view text) {
  std::string out = "\"";
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    Append(character, out);
  }
  return out += '"';
}

void JsonScope::BeginValue() {
  if (!is_empty_) text_ += ',';
  is_empty_ = false;
  BreakJsonLine(text_, depth_);
}

void JsonScope::AddValues(std::string_view written) {
  if (written.empty()) return;
  if (!is_empty_) text_ += ',';
  is_empty_ = false;
  text_ += written;
}

void JsonObject::BeginMember(std::string_view key) {
  BeginValue();
  text_ += JsonString(key) + ": ";
}

void BreakJsonLine(TextStream& text, std::size_t depth) {
  text += '\n' + std::string(2 * depth, ' ');
}

}  // namespace rux::support
