#include "protocol/positions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "protocol/json.h"
#include "support/text_file.h"
#include "support/utf8.h"

namespace rux::protocol {
namespace {

constexpr const char* kNames[] = {"utf-8", "utf-16", "utf-32"};
constexpr std::int32_t kFirstWithSurrogates = 0x10000;

// Of bytes that are no character, only the first one.
struct Step {
  std::size_t bytes;
  std::uint32_t units;
};
Step FirstStep(std::string_view text, Encoding encoding) {
  if (static_cast<unsigned char>(text.front()) < 0x80) return {1, 1};
  const support::Character character = support::FirstCharacter(text);
  if (!character.is_valid()) return {1, 1};
  const std::size_t size = character.bytes.size();
  switch (encoding) {
    case Encoding::kUtf8:
      return {size, static_cast<std::uint32_t>(size)};
    case Encoding::kUtf16:
      return {size, character.code < kFirstWithSurrogates ? 1U : 2U};
    default:
      return {size, 1};
  }
}

}  // namespace

const char* NameOf(Encoding encoding) { return kNames[static_cast<std::size_t>(encoding)]; }

Encoding NegotiatedEncoding(const Json& offered) {
  if (offered.is_array()) {
    for (const Json& each : offered) {
      for (const Encoding known : {Encoding::kUtf8, Encoding::kUtf16, Encoding::kUtf32}) {
        if (each == NameOf(known)) return known;
      }
    }
  }
  return Encoding::kUtf16;
}

void to_json(Json& json, const Position& position) {
  json = {{"line", position.line}, {"character", position.character}};
}

void from_json(const Json& json, Position& position) {
  json.at("line").get_to(position.line);
  json.at("character").get_to(position.character);
}

void to_json(Json& json, const Range& range) {
  json = {{"start", range.start}, {"end", range.end}};
}

void from_json(const Json& json, Range& range) {
  json.at("start").get_to(range.start);
  json.at("end").get_to(range.end);
}

TextLines::TextLines(std::string_view text) : text_(text), starts_{0} {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\n' && text[i] != '\r') continue;
    if (text.substr(i, 2) == "\r\n") ++i;
    starts_.push_back(static_cast<std::uint32_t>(i + 1));
  }
}

std::string_view TextLines::Line(std::size_t line) const {
  const std::size_t end = line + 1 < starts_.size() ? starts_[line + 1] : text_.size();
  std::string_view text = text_.substr(starts_[line], end - starts_[line]);
  if (line + 1 < starts_.size())
    text.remove_suffix(text.size() - text.find_last_not_of("\r\n") - 1);
  return text;
}

Position TextLines::PositionOf(std::size_t offset, Encoding encoding) const {
  offset = std::min(offset, text_.size());
  const auto after = std::upper_bound(starts_.begin(), starts_.end(), offset);
  const auto line = static_cast<std::size_t>(after - starts_.begin()) - 1;
  const std::string_view text = Line(line);
  const std::size_t bytes = std::min(offset - starts_[line], text.size());
  const bool goes_on = last_.line == line && last_.encoding == encoding && last_.bytes <= bytes;
  Counted at = goes_on ? last_ : Counted{line, 0, 0, encoding};
  while (at.bytes < bytes) {
    const Step step = FirstStep(text.substr(at.bytes), encoding);
    if (at.bytes + step.bytes > bytes) break;
    at.bytes += step.bytes;
    at.units += step.units;
  }
  last_ = at;
  return {static_cast<std::uint32_t>(line), at.units};
}

Range TextLines::RangeOf(support::ByteRange range, Encoding encoding) const {
  return {PositionOf(range.begin, encoding), PositionOf(range.end, encoding)};
}

std::size_t TextLines::OffsetOf(Position position, Encoding encoding) const {
  if (position.line >= starts_.size()) return text_.size();
  const std::string_view text = Line(position.line);
  std::size_t bytes = 0;
  std::uint32_t units = 0;
  while (bytes < text.size() && units < position.character) {
    const Step step = FirstStep(text.substr(bytes), encoding);
    if (units + step.units > position.character) break;
    bytes += step.bytes;
    units += step.units;
  }
  return starts_[position.line] + bytes;
}

support::ByteRange TextLines::BytesOf(const Range& range, Encoding encoding) const {
  const auto begin = static_cast<std::uint32_t>(OffsetOf(range.start, encoding));
  const auto end = static_cast<std::uint32_t>(OffsetOf(range.end, encoding));
  return {begin, std::max(begin, end)};
}

}  // namespace rux::protocol
