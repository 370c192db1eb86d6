#include "support/json.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "support/utf8.h"

namespace rux::support {
namespace {

void AppendEscaped(char c, std::string& out) {
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  constexpr std::string_view kNames = "\"\\bfnrt";
  const std::size_t named = kNamed.find(c);
  if (named != std::string_view::npos) {
    out.append({'\\', kNames[named]});
  } else if (static_cast<unsigned char>(c) < 0x20) {
    out += fmt::format("\\u{:04x}", c);
  } else {
    out += c;
  }
}

}  // namespace

std::string JsonString(std::string_view text) {
  constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD
  std::string out = "\"";
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    if (character.bytes.size() == 1 && character.is_valid()) {
      AppendEscaped(character.bytes.front(), out);
    } else {
      out += character.is_valid() ? character.bytes : kReplacement;
    }
  }
  return out += '"';
}

void JsonScope::BeginValue() {
  if (!is_empty_) text_ += ',';
  is_empty_ = false;
  BreakJsonLine(text_, depth_);
}

void JsonObject::BeginMember(std::string_view key) {
  BeginValue();
  text_ += JsonString(key) + ": ";
}

void BreakJsonLine(std::string& text, std::size_t depth) {
  text.append(1, '\n').append(2 * depth, ' ');
}

}  // namespace rux::support
