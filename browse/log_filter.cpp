#include "browse/log_filter.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "browse/limit.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "machine/value.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "support/ascii.h"
#include "support/failure.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::browse {
namespace {

namespace language = ruxcomp::language;

// Longer ones are not looked for.
constexpr std::size_t kLongestName = 256;
// Digits of an ID, with zeros before it.
constexpr std::size_t kMostDigits = 16;
// What waits is looked at in pieces of this size, or by lines.
constexpr std::size_t kPiece = std::size_t{1} << 16;

constexpr std::string_view kFields[] = {"{name}", "{id}", "{hex}"};
constexpr const char* kDefaults[] = {"{name}", "0x{hex}"};

// Whether a name or a number goes on with it.
bool IsWordCharacter(char c) {
  return support::IsLetterOrDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool BeginsWord(const std::string& text) { return text.empty() || IsWordCharacter(text.front()); }
bool EndsWord(const std::string& text) { return text.empty() || IsWordCharacter(text.back()); }

}  // namespace

LogPattern::LogPattern(const std::string& text) {
  std::size_t count = 0;
  for (const std::string_view& name : kFields) {
    for (std::size_t at = text.find(name); at != std::string::npos;
         at = text.find(name, at + name.size())) {
      before_ = text.substr(0, at);
      after_ = text.substr(at + name.size());
      field_ = static_cast<Field>(&name - std::begin(kFields));
      ++count;
    }
  }
  constexpr std::size_t kLongest = 200;
  if (count == 1 && text.size() <= kLongest) return;
  throw support::Failure(
      support::ExitStatus::kWrongUsage,
      "--pattern {} must have {}, {} or {} in it, once, and at most {} characters",
      support::Shortened(text), kFields[0], kFields[1], kFields[2], kLongest);
}

std::vector<LogPattern> PatternsOf(const std::vector<std::string>& texts) {
  if (texts.empty()) return {std::begin(kDefaults), std::end(kDefaults)};
  return {texts.begin(), texts.end()};
}

void LogFilter::Names::Add(std::string_view name, Ordinal sensor) {
  if (name.empty() || name.size() > kLongestName) return;
  std::uint32_t node = 0;
  for (const char c : name) {
    const auto [place, is_new] =
        next.try_emplace({node, c}, static_cast<std::uint32_t>(sensors.size()));
    if (is_new) sensors.push_back(kNone);
    node = place->second;
  }
  if (sensors[node] == kNone) sensors[node] = sensor;
}

LogFilter::LogFilter(const machine::Machine& machine, std::vector<LogPattern> patterns)
    : machine_(machine), patterns_(std::move(patterns)) {
  for (const ruxcomp::Section sensor : machine.model().sections(RUX_SECT_SENSOR))
    names_.Add(sensor.name(), sensor.ordinal());
  for (const LogPattern& pattern : patterns_) {
    longest_ =
        std::max(longest_, pattern.before().size() + std::max(kLongestName, kMostDigits + 2) +
                               pattern.after().size() + 1);
  }
}

void LogFilter::Add(std::string_view bytes, support::TextStream& out) {
  const std::size_t line_end = bytes.rfind('\n');
  const std::size_t waited = waiting_.size();
  waiting_ += bytes;
  if (line_end != std::string_view::npos) Annotate(waited + line_end + 1, out);
  if (waiting_.size() >= kPiece + longest_) Annotate(waiting_.size() - longest_, out);
}

void LogFilter::End(support::TextStream& out) { Annotate(waiting_.size(), out); }

// A match may end beyond the end.
void LogFilter::Annotate(std::size_t end, support::TextStream& out) {
  std::size_t written = 0;
  std::size_t at = 0;
  while (at < end) {
    const Match match = MatchAt(at);
    if (match.sensor == kNone) {
      ++at;
      continue;
    }
    out += std::string_view(waiting_).substr(written, match.end - written);
    out += TextOf(match.sensor);
    written = at = match.end;
  }
  out += std::string_view(waiting_).substr(written, at - written);
  if (at > 0) last_ = waiting_[at - 1];
  waiting_.erase(0, at);
}

// The longest one.
LogFilter::Match LogFilter::MatchAt(std::size_t at) const {
  Match best;
  const bool is_in_word = IsWordCharacter(at == 0 ? last_ : waiting_[at - 1]);
  for (const LogPattern& pattern : patterns_) {
    if (is_in_word && BeginsWord(pattern.before())) continue;
    const Match match = MatchOf(pattern, at);
    if (match.sensor != kNone && match.end > best.end) best = match;
  }
  return best;
}

LogFilter::Match LogFilter::MatchOf(const LogPattern& pattern, std::size_t at) const {
  if (waiting_.compare(at, pattern.before().size(), pattern.before()) != 0) return {};
  at += pattern.before().size();
  return pattern.field() == LogPattern::Field::kName ? NameAt(pattern, at) : IdAt(pattern, at);
}

// The longest name that the pattern goes on after.
LogFilter::Match LogFilter::NameAt(const LogPattern& pattern, std::size_t at) const {
  Match best;
  std::uint32_t node = 0;
  for (; at < waiting_.size(); ++at) {
    const auto next = names_.next.find({node, waiting_[at]});
    if (next == names_.next.end()) break;
    node = next->second;
    if (names_.sensors[node] != kNone && EndsAt(pattern, at + 1))
      best = {at + 1 + pattern.after().size(), names_.sensors[node]};
  }
  return best;
}

LogFilter::Match LogFilter::IdAt(const LogPattern& pattern, std::size_t at) const {
  int base = pattern.field() == LogPattern::Field::kHex ? 16 : 10;
  if (pattern.field() == LogPattern::Field::kId && waiting_.compare(at, 2, "0x") == 0) {
    base = 16;
    at += 2;
  }
  const char* const begin = waiting_.data() + at;
  const char* const end =
      begin + std::min(kMostDigits, waiting_.size() - std::min(at, waiting_.size()));
  std::uint32_t id = 0;
  const auto [stop, error] = std::from_chars(begin, end, id, base);
  const std::size_t stop_at = at + static_cast<std::size_t>(stop - begin);
  if (error != std::errc() || !EndsAt(pattern, stop_at)) return {};
  const ruxcomp::Section sensor = machine_.model().section_with_id(RUX_SECT_SENSOR, id);
  if (!sensor) return {};
  return {stop_at + pattern.after().size(), sensor.ordinal()};
}

bool LogFilter::EndsAt(const LogPattern& pattern, std::size_t at) const {
  const std::string& after = pattern.after();
  if (waiting_.compare(at, after.size(), after) != 0) return false;
  at += after.size();
  return !EndsWord(after) || at >= waiting_.size() || !IsWordCharacter(waiting_[at]);
}

const std::string& LogFilter::TextOf(Ordinal ordinal) {
  const auto [known, is_new] = texts_.try_emplace(ordinal);
  std::string& text = known->second;
  if (!is_new) return text;
  const language::SectionKind& kind = language::KindOf(language::SECTION_SENSOR);
  const ruxcomp::Section sensor = machine_.model().sections(kind.compiled)[ordinal];
  text = " [";
  if (const auto id = sensor.id()) text += support::IdText(*id) + ' ';
  text += support::Shortened(support::NameText(sensor.name()));
  for (const ruxcomp::Entry entry : sensor.entries()) {
    const std::optional<Limit> limit = LimitIn(machine_, sensor, entry);
    if (limit)
      text +=
          fmt::format(", {} {}", machine::KeyOf(sensor, entry), support::SafeText(limit->Amount()));
  }
  if (const auto place = machine_.PlaceOf(kind, ordinal))
    text +=
        fmt::format(", {}:{}", support::Shortened(support::SafeText(place->File())), place->line);
  text += ']';
  return text;
}

}  // namespace rux::browse
