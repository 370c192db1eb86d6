#include "settings/baseline.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/document.h"
#include "settings/json_file.h"
#include "support/json.h"

namespace rux::settings {
namespace {

constexpr std::size_t kLargestBaseline = std::size_t{1} << 25;

// Raised when a member goes away or changes its meaning.
constexpr std::uint64_t kVersion = 1;

enum BaselineMember : std::size_t { kSchemaPath, kVersionNumber, kAcceptedWarnings };
constexpr Key kBaselineKeys[] = {
    {"$schema", JsonValue::Kind::kString},
    {"schema", JsonValue::Kind::kNumber},
    {"warnings", JsonValue::Kind::kArray},
};

// The texts of an entry, in the order of BaselineKey; the first ones are required.
constexpr std::string BaselineKey::*kTexts[] = {&BaselineKey::script, &BaselineKey::id,
                                                &BaselineKey::section, &BaselineKey::name,
                                                &BaselineKey::entry};
constexpr std::size_t kTextCount = std::size(kTexts);
constexpr std::size_t kRequiredTexts = 2;
constexpr Key kEntryKeys[] = {
    {"script", JsonValue::Kind::kString},  {"id", JsonValue::Kind::kString},
    {"section", JsonValue::Kind::kString}, {"name", JsonValue::Kind::kString},
    {"entry", JsonValue::Kind::kString},   {"count", JsonValue::Kind::kNumber},
};
static_assert(std::size(kEntryKeys) == kTextCount + 1);

const JsonValue& Required(const Document& document, const JsonValue& object,
                          const std::vector<const JsonValue*>& members, std::size_t at,
                          const Key* keys) {
  if (members[at] == nullptr) {
    document.Refuse(object.line, std::string(keys[at].name) + " is missing");
  }
  return *members[at];
}

std::pair<BaselineKey, std::uint64_t> ParseEntry(const Document& document, const JsonValue& entry) {
  document.Expect(entry, JsonValue::Kind::kObject, "a warning");
  const std::vector<const JsonValue*> members = document.Members(entry, kEntryKeys);
  BaselineKey key;
  for (std::size_t i = 0; i < kTextCount; ++i) {
    if (i < kRequiredTexts) Required(document, entry, members, i, kEntryKeys);
    if (members[i] != nullptr) key.*kTexts[i] = members[i]->text;
  }
  const JsonValue& count = Required(document, entry, members, kTextCount, kEntryKeys);
  if (count.number.value_or(0) == 0) document.Refuse(count.line, "count must be at least 1");
  return {std::move(key), *count.number};
}

}  // namespace

BaselineCounts ParseBaseline(const std::string& path, std::string_view text) {
  const Document document(path, text);
  const std::vector<const JsonValue*> members = document.Members(document.root(), kBaselineKeys);
  const JsonValue& version =
      Required(document, document.root(), members, kVersionNumber, kBaselineKeys);
  if (version.number != kVersion) {
    document.Refuse(version.line, "schema must be " + std::to_string(kVersion));
  }
  BaselineCounts counts;
  for (const JsonValue& entry :
       Required(document, document.root(), members, kAcceptedWarnings, kBaselineKeys).items) {
    // Merging branches may leave an entry twice: the larger count is right for one of them.
    const auto [key, count] = ParseEntry(document, entry);
    std::uint64_t& known = counts[key];
    known = std::max(known, count);
  }
  return counts;
}

BaselineCounts ReadBaseline(const std::string& path) {
  return ParseBaseline(path, ReadTextFile(path, kLargestBaseline));
}

std::string BaselineText(const BaselineCounts& counts) {
  std::string text = "{\n  \"schema\": " + std::to_string(kVersion) + ",\n  \"warnings\": [";
  const char* separator = "\n    {";
  for (const auto& [key, count] : counts) {
    text += separator;
    separator = ",\n    {";
    for (std::size_t i = 0; i < kTextCount; ++i) {
      const std::string& member = key.*kTexts[i];
      if (i >= kRequiredTexts && member.empty()) continue;
      text += '"' + std::string(kEntryKeys[i].name) + "\": " + support::JsonString(member) + ", ";
    }
    text += '"' + std::string(kEntryKeys[kTextCount].name) + "\": " + std::to_string(count) + '}';
  }
  return text + (counts.empty() ? "" : "\n  ") + "]\n}\n";
}

}  // namespace rux::settings
