#include "settings/lint_settings.h"

#include <fmt/format.h>
#include <regex.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "settings/document.h"
#include "settings/json_file.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::settings {
namespace {

namespace language = ruxcomp::language;

enum Member : std::size_t { kNames, kIds, kSensorProperties };
constexpr Key kKeys[] = {
    {"names", JsonValue::Kind::kObject},
    {"ids", JsonValue::Kind::kObject},
    {"sensor_properties", JsonValue::Kind::kArray},
};

// The kinds whose sections have names.
std::vector<std::string> NamedKinds() {
  std::vector<std::string> kinds;
  for (const language::SectionKind& kind : language::kSectionKinds) {
    for (const auto& row : kind.templates) {
      if (row.identifier == language::ENTRY_NAME) kinds.emplace_back(kind.keyword);
    }
  }
  return kinds;
}

void AddPattern(const Document& document, const JsonMember& member, LintSettings& settings) {
  const std::vector<std::string> kinds = NamedKinds();
  if (std::find(kinds.begin(), kinds.end(), member.key) == kinds.end()) {
    const std::string kind = support::Shortened(member.key);
    document.Refuse(member.line, "no kind of section with a NAME: " + support::NameText(kind) +
                                     support::NearText(kind, kinds));
  }
  document.Expect(member.value, JsonValue::Kind::kString, "the pattern of names");
  std::string trouble;
  std::optional<NamePattern> pattern = NamePattern::From(member.value.text, trouble);
  if (!pattern) {
    document.Refuse(member.value.line, fmt::format("{} is not a regular expression: {}",
                                                   support::Shortened(member.value.text), trouble));
  }
  settings.names.insert_or_assign(member.key, std::move(*pattern));
}

// An ID as a script writes it, or as a number.
std::uint32_t IdIn(const Document& document, const JsonValue& value) {
  if (value.number && *value.number <= 0xFFFFFFFF) return static_cast<std::uint32_t>(*value.number);
  if (value.kind == JsonValue::Kind::kString && !value.text.empty()) {
    const language::Number number = language::ReadNumber(value.text);
    if (number.is_number && !number.has_rest && !number.is_cut) return number.value;
  }
  document.Refuse(value.line,
                  "an ID must be a number from 0 to 4294967295, or a string such as "
                  "\"0x100\"");
}

void AddRange(const Document& document, const JsonMember& member, LintSettings& settings) {
  document.Expect(member.value, JsonValue::Kind::kArray, "a range of IDs");
  const std::vector<JsonValue>& ends = member.value.items;
  if (ends.size() != 2) {
    document.Refuse(member.value.line,
                    fmt::format("a range of IDs must have two ends, found {}", ends.size()));
  }
  const IdRange range{IdIn(document, ends[0]), IdIn(document, ends[1])};
  if (range.first > range.last) {
    document.Refuse(member.value.line, "the first ID of the range is above the last one");
  }
  settings.ids.insert_or_assign(member.key, range);
}

}  // namespace

std::optional<NamePattern> NamePattern::From(const std::string& text, std::string& trouble) {
  const std::shared_ptr<regex_t> made(new regex_t(), [](regex_t* expression) {
    regfree(expression);
    delete expression;
  });
  const std::string whole = "^(" + text + ")$";
  const int error = regcomp(made.get(), whole.c_str(), REG_EXTENDED | REG_NOSUB);
  if (error != 0) {
    char reason[128];
    regerror(error, made.get(), reason, sizeof(reason));
    trouble = reason;
    *made = {};
    return std::nullopt;
  }
  NamePattern pattern(text);
  pattern.compiled_ = made;
  return pattern;
}

bool NamePattern::Fits(std::string_view name) const {
  return regexec(compiled_.get(), std::string(name).c_str(), 0, nullptr, 0) == 0;
}

LintSettings ParseLintSettings(const Document& document, const JsonValue& object) {
  const std::vector<const JsonValue*> members = document.Members(object, kKeys);
  LintSettings settings;
  if (members[kNames] != nullptr) {
    for (const JsonMember& member : members[kNames]->members)
      AddPattern(document, member, settings);
  }
  if (members[kIds] != nullptr) {
    for (const JsonMember& member : members[kIds]->members) AddRange(document, member, settings);
  }
  for (const auto& [property, line] :
       document.StringsOf(members[kSensorProperties], "the name of a property")) {
    if (!language::HasPrefix(property, language::kPropertyPrefix)) {
      document.Refuse(line, fmt::format("the name of a property must begin with {}, found {}",
                                        language::kPropertyPrefix, support::Shortened(property)));
    }
    settings.sensor_properties.push_back(property);
  }
  return settings;
}

}  // namespace rux::settings
