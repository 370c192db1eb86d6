#include "inspect/section_search.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inspect/meta_path.h"
#include "support/failure.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::inspect {
namespace {

constexpr char kIdSign = '#';
constexpr char kOrdinalSign = '@';

std::string IdText(std::uint32_t id) { return fmt::format("#0x{:X}", id); }

std::size_t ById(const NamedSections& sections, std::uint32_t id) {
  if (sections.with_id) {
    if (const auto ordinal = sections.with_id(id)) return *ordinal;
  }
  std::vector<std::string> ids;
  for (std::size_t i = 0; i < sections.count; ++i) {
    const std::optional<std::uint32_t> other = sections.id(i);
    if (!other) continue;
    if (*other == id) return i;
    ids.push_back(IdText(*other));
  }
  throw NotFound("there is no " + sections.keyword + " with the ID " + IdText(id) +
                 support::NearText(IdText(id), ids, support::SafeText));
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
                 support::NearText(name, names));
}

}  // namespace

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

support::Failure NotFound(const std::string& text) {
  return support::Failure(support::ExitStatus::kFindings, "{}", text);
}

support::Failure EntryNotFound(const std::string& lack, const std::string& key,
                               const std::vector<std::string>& keys) {
  return NotFound(lack + " entry " + support::NameText(key) + support::NearText(key, keys));
}

}  // namespace rux::inspect
