#include "evaluation/readings.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

#include "evaluation/result.h"
#include "evaluation/target.h"
#include "machine/machine.h"
#include "machine/origins.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "support/failure.h"
#include "support/safe_text.h"

namespace rux::evaluation {
namespace {

// Of an access without arguments.
constexpr std::size_t kFewestNumbers = 5;

// None for a text that is not a number of 64 bits.
std::optional<Number> ParseNumber(std::string_view text) {
  const bool is_negative = !text.empty() && text.front() == '-';
  if (is_negative) text.remove_prefix(1);
  const bool is_hexadecimal = language::IsHexadecimal(text);
  if (is_hexadecimal) text.remove_prefix(2);
  std::uint64_t magnitude = 0;
  const char* const end = text.data() + text.size();
  const std::from_chars_result read =
      std::from_chars(text.data(), end, magnitude, is_hexadecimal ? 16 : 10);
  if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
  if (is_negative && magnitude > std::uint64_t{1} << 63) return std::nullopt;
  return is_negative ? -Number{magnitude} : Number{magnitude};
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && language::IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && language::IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// The number, or that of the word in the scripts of the machine; of several definitions the last.
Number NumberOfPart(const machine::Machine& machine, std::string_view part,
                    const std::string& key) {
  if (const std::optional<Number> number = ParseNumber(part)) return *number;
  if (machine.origins() != nullptr) {
    const std::vector<machine::Origins::Word>& words = machine.origins()->words();
    const auto word = std::find_if(words.rbegin(), words.rend(),
                                   [&](const auto& each) { return each.first == part; });
    if (word != words.rend()) return word->second;
  }
  throw support::Failure(support::ExitStatus::kFindings,
                         "{} in the reading {} is neither a number nor a word of the machine",
                         support::NameText(part), key);
}

AccessKey AccessOf(const machine::Machine& machine, const std::string& key) {
  AccessKey access;
  for (std::size_t begin = 0; begin <= key.size();) {
    const std::size_t end = std::min(key.find(',', begin), key.size());
    const std::string_view part(key.data() + begin, end - begin);
    access.push_back(Bits(NumberOfPart(machine, Trimmed(part), key)));
    begin = end + 1;
  }
  if (access.size() < kFewestNumbers) {
    throw support::Failure(support::ExitStatus::kFindings,
                           "the reading {} is not that of an access: expected "
                           "TYPE,OPERAND,NUMBER,BUS,BASE",
                           key);
  }
  return access;
}

// Of the i-th part of an access, after a comma unless it is the first.
std::string PartText(std::size_t i, Number part) {
  const bool is_address = i == 1 || i == 4;
  const bool is_hexadecimal = part > (is_address ? 9 : 0x7FFFFFFF);
  return (i == 0 ? "" : ",") +
         (is_hexadecimal ? fmt::format("0x{:X}", static_cast<std::uint64_t>(part)) : TextOf(part));
}

// The entry whose number a reading gives instead.
ValueKey ValueOfTarget(const Target& target, const std::string& key) {
  if (target.entry) return KeyOf(target.section, target.entry);
  const ruxcomp::Entry value = ValueEntry(target.section, "");
  if (target.kind->source == language::SECTION_SENSOR && value) return KeyOf(target.section, value);
  throw support::Failure(support::ExitStatus::kFindings, "{} has no value of its own for a reading",
                         key);
}

}  // namespace

Number Bits(Number number) {
  constexpr Number kLeast = -(Number{1} << 31);
  return number < 0 && number >= kLeast ? number + (Number{1} << 32) : number;
}

std::string TextOf(const AccessKey& key) {
  std::string text;
  for (std::size_t i = 0; i < key.size(); ++i) text += PartText(i, key[i]);
  return text;
}

std::string TextOf(const std::vector<Result>& parts) {
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    text += parts[i].IsNumber() ? PartText(i, Bits(parts[i].number()))
                                : std::string(i == 0 ? "" : ",") + NameOf(parts[i].kind());
  }
  return text;
}

Reading Readings::NumberOf(const std::string& text) {
  const std::string_view trimmed = Trimmed(text);
  if (const std::optional<Number> number = ParseNumber(trimmed))
    return {*number, language::IsHexadecimal(trimmed)};
  throw support::Failure(support::ExitStatus::kWrongUsage, "{} is not a whole number of 64 bits",
                         support::NameText(support::Shortened(text)));
}

ReadingKey Readings::KeyOf(const machine::Machine& machine, const std::string& text) {
  if (text.find(',') != std::string::npos) return AccessOf(machine, text);
  return ValueOfTarget(FindTarget(machine, text), text);
}

void Readings::Set(const ReadingKey& key, Sequence sequence) {
  const auto set = [&](auto& sequences, const auto& of) {
    if (sequence.empty()) {
      sequences.erase(of);
    } else {
      sequences[of] = std::move(sequence);
    }
  };
  if (const auto* access = std::get_if<AccessKey>(&key)) {
    set(accesses_, *access);
  } else {
    set(values_, std::get<ValueKey>(key));
  }
}

const Sequence* Readings::OfAccess(const AccessKey& key) const {
  const auto found = accesses_.find(key);
  return found == accesses_.end() ? nullptr : &found->second;
}

const Sequence* Readings::OfValue(const ValueKey& key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? nullptr : &found->second;
}

}  // namespace rux::evaluation
