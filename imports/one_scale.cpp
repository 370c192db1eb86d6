#include "imports/one_scale.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "imports/decimal.h"
#include "imports/scale.h"
#include "imports/script_lines.h"
#include "imports/sections.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/language/spelling.h"

namespace rux::imports {
namespace {

namespace language = ruxcomp::language;

bool IsProperty(const ScriptLine& line, std::string_view name) {
  const std::string_view key = line.key;
  return key.substr(0, language::kPropertyPrefix.size()) == language::kPropertyPrefix &&
         key.substr(language::kPropertyPrefix.size()) == name;
}

bool IsLimit(const ScriptLine& line) {
  return std::any_of(
      std::begin(language::kLimitsUpwards), std::end(language::kLimitsUpwards),
      [&](language::EntryId limit) { return line.key == language::KeywordOf(limit); });
}

// "13200" and "# 13.2" of "THRESHOLD_FH = 13200 # 13.2".
struct Item {
  std::string value;
  std::string comment;
};
Item ItemOf(const ScriptLine& line) {
  constexpr std::string_view kEquals = " = ";
  const std::size_t at = line.meaning.find(kEquals);
  if (at == std::string::npos) return {};
  const std::string text = line.meaning.substr(at + kEquals.size());
  const std::size_t mark = text.front() == '"' ? std::string::npos : text.find(" #");
  if (mark == std::string::npos) return {text, ""};
  return {text.substr(0, mark), text.substr(mark + 1)};
}

// Empty without such a property.
std::string ValueIn(const ScriptPart& part, std::string_view property) {
  for (const ScriptLine& line : part.lines) {
    if (IsProperty(line, property)) return ItemOf(line).value;
  }
  return "";
}

struct UnitAndScale {
  std::string unit;
  Scale scale;

  bool operator==(const UnitAndScale& other) const {
    return unit == other.unit && scale.power == other.scale.power &&
           scale.is_signed == other.scale.is_signed;
  }
};

// None when the divisor is not a power of ten.
std::optional<UnitAndScale> ScaleOf(const ScriptPart& part) {
  UnitAndScale scale;
  scale.unit = ValueIn(part, kUnitProperty);
  scale.scale.is_signed = ValueIn(part, kSignProperty) != "unsigned";
  const std::string divisor = ValueIn(part, kDivisorProperty);
  if (divisor.empty()) return scale;
  const std::optional<Decimal> number = Decimal::In(divisor);
  if (!number || number->digits() != 1 || number->exponent() < 0) return std::nullopt;
  scale.scale.power = number->exponent();
  return scale;
}

using LimitLines = std::map<std::string, std::string>;  // by key
LimitLines LimitLinesOf(const ScriptPart* part) {
  LimitLines lines;
  if (part == nullptr) return lines;
  for (const ScriptLine& line : part->lines) {
    if (IsAboutLimits(line)) lines.emplace(line.key, line.meaning);
  }
  return lines;
}

// The line with the same amount as a number of that scale; empty where that is not a whole number.
std::string Rescaled(const ScriptLine& line, const Scale& from, const Scale& to) {
  const Item item = ItemOf(line);
  const std::optional<Decimal> read = Decimal::In(item.value);
  std::optional<std::int64_t> number = read ? read->WholeAt(0) : std::nullopt;
  if (!number) return "";
  if (from.is_signed && *number > std::numeric_limits<std::int32_t>::max())
    *number -= std::int64_t{std::numeric_limits<std::uint32_t>::max()} + 1;
  const Decimal amount(*number, -from.power);
  const std::optional<std::string> written = NumberFor(amount, to);
  if (!written) return "";
  const std::string comment = item.comment.empty() ? "# " + amount.Text() : item.comment;
  return line.key + " = " + *written + "    " + comment + '\n';
}

// The section with numbers of that scale. None when an amount has no such number; in a section that
// is only compared with, it stays as it is.
std::optional<std::string> TextIn(const ScriptPart& part, const Scale& from, const Scale& to,
                                  bool is_to_compare) {
  const std::string power(static_cast<std::size_t>(to.power), '0');
  const std::string divisor =
      std::string(language::kPropertyPrefix) + kDivisorProperty + " = 1" + power + '\n';
  std::size_t last = 0;  // after which the divisor belongs
  bool has_divisor = to.power == 0;
  for (std::size_t i = 0; i < part.lines.size(); ++i) {
    const ScriptLine& line = part.lines[i];
    if (line.is_blank()) continue;
    if (!has_divisor) last = i;
    has_divisor = has_divisor || IsProperty(line, kDivisorProperty);
  }
  std::string text;
  for (std::size_t i = 0; i < part.lines.size(); ++i) {
    const ScriptLine& line = part.lines[i];
    std::string rescaled;
    if (from.power != to.power && IsLimit(line)) {
      rescaled = Rescaled(line, from, to);
      if (rescaled.empty() && !is_to_compare) return std::nullopt;
    }
    if (from.power != to.power && IsProperty(line, kDivisorProperty)) rescaled = divisor;
    text += rescaled.empty() ? std::string(line.text) : rescaled;
    if (text.back() != '\n') text += '\n';
    if (!has_divisor && i == last) text += divisor;
  }
  return text;
}

}  // namespace

bool IsAboutLimits(const ScriptLine& line) {
  return IsLimit(line) || IsProperty(line, kUnitProperty) || IsProperty(line, kDivisorProperty) ||
         IsProperty(line, kSignProperty);
}

bool HaveTwoScales(const SensorVersions& versions) {
  if (versions.edited == nullptr || versions.written == nullptr) return false;
  const LimitLines base = LimitLinesOf(versions.base);
  const LimitLines edited = LimitLinesOf(versions.edited);
  const LimitLines written = LimitLinesOf(versions.written);
  if (edited == base || written == base || edited == written) return false;
  const std::optional<UnitAndScale> scale = ScaleOf(*versions.edited);
  for (const ScriptPart* const other : {versions.base, versions.written}) {
    if (other != nullptr && (!scale || !(ScaleOf(*other) == scale))) return true;
  }
  return false;
}

std::optional<InOneScale> BroughtToOneScale(const SensorVersions& versions) {
  static const ScriptPart none = {};
  const ScriptPart& base = versions.base == nullptr ? none : *versions.base;
  const std::optional<UnitAndScale> edited = ScaleOf(*versions.edited);
  const std::optional<UnitAndScale> written = ScaleOf(*versions.written);
  const std::optional<UnitAndScale> before = versions.base == nullptr ? edited : ScaleOf(base);
  if (!edited || !written || !before) return std::nullopt;
  for (const UnitAndScale* const other : {&*written, &*before}) {
    if (other->unit != edited->unit || other->scale.is_signed != edited->scale.is_signed)
      return std::nullopt;
  }
  const Scale& finest = written->scale.power > edited->scale.power ? written->scale : edited->scale;
  const auto in_base = TextIn(base, before->scale, finest, true);
  const auto in_edited = TextIn(*versions.edited, edited->scale, finest, false);
  const auto in_written = TextIn(*versions.written, written->scale, finest, false);
  if (!in_base || !in_edited || !in_written) return std::nullopt;
  return InOneScale{*in_base, *in_edited, *in_written};
}

}  // namespace rux::imports
