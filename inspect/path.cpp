#include "inspect/path.h"

#include <fmt/format.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/nearest.h"
#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::inspect {
namespace {

support::Failure BadPath(const std::string& text) {
  return support::Failure(support::ExitStatus::kWrongUsage, "{}", text);
}

// Takes a quoted step off the path, whose opening quote is its first character.
PathStep TakeQuoted(std::string_view& path) {
  PathStep step{"", true};
  path.remove_prefix(1);
  while (true) {
    const std::size_t quote = path.find('"');
    if (quote == std::string_view::npos) {
      throw BadPath("a double quote in the path is not closed");
    }
    step.text += path.substr(0, quote);
    path.remove_prefix(quote + 1);
    if (path.empty() || path.front() != '"') return step;
    step.text += '"';
    path.remove_prefix(1);
  }
}

PathStep TakeStep(std::string_view& path) {
  if (!path.empty() && path.front() == '"') return TakeQuoted(path);
  PathStep step{std::string(path.substr(0, path.find('/'))), false};
  path.remove_prefix(step.text.size());
  if (step.text.empty()) {
    throw BadPath("the path has an empty step (an empty name is written \"\")");
  }
  return step;
}

constexpr char kIdSign = '#';
constexpr char kOrdinalSign = '@';

// IDs that look alike need have nothing in common: a wrong one gets no suggestions.
std::string ListingHint(const NamedSections& sections) {
  const std::string which =
      sections.count == 1 ? "the only one" : fmt::format("all {}", sections.count);
  return sections.lister(sections.keyword) + " lists " + which;
}

std::size_t ById(const NamedSections& sections, std::uint32_t id) {
  if (sections.with_id) {
    if (const auto ordinal = sections.with_id(id)) return *ordinal;
  }
  for (std::size_t i = 0; i < sections.count; ++i) {
    if (sections.id(i) == id) return i;
  }
  throw NotFound("there is no " + sections.keyword + " with the ID " + support::IdText(id) + "; " +
                 ListingHint(sections));
}

std::size_t ByName(const NamedSections& sections, const std::string& name) {
  if (sections.named) {
    if (const auto ordinal = sections.named(name)) return *ordinal;
  }
  std::vector<std::string> names;
  for (std::size_t i = 0; i < sections.count; ++i) {
    const std::optional<std::string> other = sections.name(i);
    if (!other) continue;
    if (*other == name) return i;
    names.push_back(*other);
  }
  throw NotFound("there is no " + sections.keyword + " " + support::NameText(name) +
                 support::NearText(name, names, ListingHint(sections)));
}

}  // namespace

std::string LsCommand(const std::string& keyword) { return "'rux ls FILE " + keyword + '\''; }

std::optional<std::uint32_t> PathStep::NumberAfter(char sign) const {
  if (quoted || text.empty() || text.front() != sign) return std::nullopt;
  std::string_view digits = std::string_view(text).substr(1);
  int base = 10;
  if (ruxcomp::language::IsHexadecimal(digits)) {
    digits.remove_prefix(2);
    base = 16;
  }
  std::uint32_t number = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
  if (error != std::errc() || stop != end) {
    throw BadPath("expected a number after the " + std::string(1, sign) + " in " + text);
  }
  return number;
}

std::vector<PathStep> ParsePath(const std::string& path) {
  std::vector<PathStep> steps;
  std::string_view rest(path);
  while (true) {
    steps.push_back(TakeStep(rest));
    if (rest.empty()) return steps;
    if (rest.front() != '/') throw BadPath("a quoted name in the path is followed by other text");
    rest.remove_prefix(1);
  }
}

std::optional<std::uint32_t> OrdinalOf(const PathStep& step) {
  return step.NumberAfter(kOrdinalSign);
}

std::size_t FindSection(const NamedSections& sections, const PathStep& step) {
  if (const auto ordinal = OrdinalOf(step)) {
    if (*ordinal < sections.count) return *ordinal;
    throw NotFound(fmt::format("there is no {} @{}; the last one is @{}", sections.keyword,
                               *ordinal, sections.count - 1));
  }
  if (const auto id = step.NumberAfter(kIdSign)) return ById(sections, *id);
  return ByName(sections, step.text);
}

void ExpectSection(const ruxcomp::language::SectionKind& kind, const std::vector<PathStep>& path,
                   Lister lister) {
  if (path.size() > 1) return;
  throw NotFound(fmt::format("the path names no section ({} lists them)", lister(kind.keyword)));
}

support::Failure PathTooLong() { return BadPath("the path continues after a part of an entry"); }

support::Failure NoValueAt(std::uint32_t n, std::size_t count) {
  return NotFound(fmt::format("there is no value @{}; the entry has {}", n, count));
}

support::Failure NotFound(const std::string& text) {
  return support::Failure(support::ExitStatus::kFindings, "{}", text);
}

support::Failure EntryNotFound(const std::string& lack, const std::string& key,
                               const std::vector<std::string>& keys) {
  return NotFound(lack + " entry " + support::NameText(key) + support::NearText(key, keys));
}

}  // namespace rux::inspect
