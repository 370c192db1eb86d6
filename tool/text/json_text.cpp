#include "tool/text/json_text.h"

#include "tool/text/safe_text.h"

namespace rux {
namespace {

// Whether what a text begins with is a character, and the shortest form of one that Unicode has.
bool IsUnicode(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return first < 0x80;
  const auto second = static_cast<unsigned char>(character[1]);
  if (first == 0xE0) return second >= 0xA0;
  if (first == 0xED) return second < 0xA0;  // no surrogates
  if (first == 0xF0) return second >= 0x90;
  if (first == 0xF4) return second < 0x90;
  return first < 0xF4;
}

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

void AppendEscaped(char c, std::string& out) {
  constexpr char kDigits[] = "0123456789abcdef";
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  constexpr std::string_view kNames = "\"\\bfnrt";
  const auto byte = static_cast<unsigned char>(c);
  if (const std::size_t i = kNamed.find(c); i != kNamed.npos) {
    out += {'\\', kNames[i]};
  } else if (byte >= 0x20 && byte != 0x7F) {
    out += c;
  } else {
    out += {'\\', 'u', '0', '0', kDigits[byte >> 4], kDigits[byte & 15]};
  }
}

}  // namespace

std::string JsonString(std::string_view text) {
  std::string out = "\"";
  while (!text.empty()) {
    const std::string_view character = FirstCharacter(text);
    text.remove_prefix(character.size());
    if (!IsUnicode(character)) {
      out += kReplacement;
    } else if (character.size() > 1) {
      out += character;
    } else {
      AppendEscaped(character.front(), out);
    }
  }
  return out + '"';
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::string_view character = FirstCharacter(text);
    if (!IsUnicode(character)) return false;
    text.remove_prefix(character.size());
  }
  return true;
}

JsonWriter& JsonWriter::Key(std::string_view key) {
  BeginValue();
  text_ += JsonString(key) + ": ";
  has_key_ = true;
  return *this;
}

JsonWriter& JsonWriter::Open(char bracket) {
  BeginValue();
  text_ += bracket;
  open_.push_back(bracket == '{' ? '}' : ']');
  is_first_ = true;
  return *this;
}

JsonWriter& JsonWriter::Close() {
  const char bracket = open_.back();
  open_.pop_back();
  if (!is_first_) BreakLine();
  text_ += bracket;
  is_first_ = false;
  return *this;
}

JsonWriter& JsonWriter::Literal(std::string_view text) {
  BeginValue();
  text_ += text;
  return *this;
}

void JsonWriter::BeginValue() {
  if (has_key_) {
    has_key_ = false;
    return;
  }
  if (!is_first_) text_ += ',';
  if (!open_.empty()) BreakLine();
  is_first_ = false;
}

void JsonWriter::BreakLine() { text_.append(1, '\n').append(2 * open_.size(), ' '); }

}  // namespace rux
