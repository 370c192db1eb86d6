// Names, IDs and properties by the customs of a team.
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "lint/lint_list.h"
#include "lint/lint_rows.h"
#include "lint/lint_rule.h"
#include "rules/rule.h"
#include "rules/script_item.h"
#include "ruxcomp/language/sections.h"
#include "settings/lint_settings.h"

namespace rux::lint {
namespace {

using rules::ItemRef;
using rules::RuleContext;
using rules::ScriptItem;

std::string InSmallLetters(std::string_view text) {
  std::string small(text);
  std::transform(small.begin(), small.end(), small.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return small;
}

// What is found first under a text.
struct Named {
  ItemRef item;
  std::string_view name;
  std::uint32_t kind;
};

class SimilarNameRule : public rules::Rule {
 public:
  explicit SimilarNameRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return entry == language::ENTRY_NAME || entry == language::ENTRY_DEFINED_WORD;
  }
  void Check(const ScriptItem& item) override {
    const bool is_word = item.entry == language::ENTRY_DEFINED_WORD;
    const std::string_view name = is_word ? item.name() : item.first();
    const auto [known, is_new] =
        (is_word ? words_ : names_).try_emplace(InSmallLetters(name), Named{item, name, 0});
    const Named& other = known->second;
    if (is_new || other.name == name) return;
    context_.report
        .Add(
            RowOf(RuleId::kSimilarName), item,
            [&] { return fmt::format("{} is also written {}", name, other.name); }, name)
        .Note("here", other.item, other.name);
  }

 private:
  const RuleContext context_;
  std::unordered_map<std::string, Named> names_;
  std::unordered_map<std::string, Named> words_;
};

class NameOfTwoKindsRule : public rules::Rule {
 public:
  explicit NameOfTwoKindsRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return entry == language::ENTRY_NAME &&
           rules::In<language::SECTION_SENSOR, language::SECTION_DEVICE, language::SECTION_ACTION,
                     language::SECTION_TABLE>(kind, entry);
  }
  void Check(const ScriptItem& item) override {
    const std::string_view name = item.first();
    const auto [known, is_new] = names_.try_emplace(name, Named{item, name, item.kind->source});
    if (is_new || known->second.kind == item.kind->source) return;
    const Named& other = known->second;
    context_.report
        .Add(
            RowOf(RuleId::kNameOfTwoKinds), item,
            [&] { return fmt::format("a {} is also called {}", other.item.section->name, name); },
            name)
        .Note("here", other.item, other.name);
  }

 private:
  const RuleContext context_;
  rules::TextMap<Named> names_;
};

class NamePatternRule : public rules::Rule {
 public:
  explicit NamePatternRule(const LintContext& context) : context_(context) {}

  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return entry == language::ENTRY_NAME;
  }
  void Check(const ScriptItem& item) override {
    const auto found = context_.settings.names.find(std::string(item.kind->keyword));
    if (found == context_.settings.names.end() || found->second.Fits(item.first())) return;
    context_.report.Add(
        RowOf(RuleId::kNamePattern), item,
        [&] {
          return fmt::format("{} does not match the pattern of {} names, {}", item.first(),
                             item.kind->keyword, found->second.text());
        },
        item.first());
  }

 private:
  const LintContext context_;
};

// Looks at sensors as wholes.
class SensorSettingsRule : public rules::Rule {
 public:
  explicit SensorSettingsRule(const LintContext& context) : context_(context) {}

  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_SENSOR;
  }
  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return WantsSections(kind) && (entry == language::ENTRY_PARENT || entry == language::ENTRY_ID ||
                                   entry == language::ENTRY_P);
  }
  void BeginSection(const rules::ScriptSection& section, language::SectionId) override {
    section_ = &section;
    parent_ = {};
    id_.reset();
    properties_.clear();
  }
  void Check(const ScriptItem& item) override {
    if (item.entry == language::ENTRY_PARENT) parent_ = item.first();
    if (item.entry == language::ENTRY_P) properties_.push_back(item.name());
    if (item.entry == language::ENTRY_ID) {
      id_ = item;
      id_text_ = item.first();
    }
  }
  void EndSection() override {
    CheckRange();
    for (const std::string& property : context_.settings.sensor_properties) {
      if (std::find(properties_.begin(), properties_.end(), property) != properties_.end())
        continue;
      context_.report.Add(RowOf(RuleId::kMissingProperty), *section_,
                          [&] { return fmt::format("{} is missing", property); });
    }
  }

 private:
  void CheckRange() const {
    const auto found = context_.settings.ids.find(std::string(parent_));
    if (!id_ || found == context_.settings.ids.end()) return;
    const auto id = context_.words.WordOrNumber(id_text_);
    const settings::IdRange& range = found->second;
    if (!id || (*id >= range.first && *id <= range.last)) return;
    context_.report.Add(
        RowOf(RuleId::kIdRange), *id_,
        [&] {
          return fmt::format("{} is not in the range of {}, 0x{:X} to 0x{:X}", id_text_, parent_,
                             range.first, range.last);
        },
        id_text_);
  }

  const LintContext context_;
  const rules::ScriptSection* section_ = nullptr;
  std::string_view parent_;
  std::optional<ItemRef> id_;
  std::string_view id_text_;
  std::vector<std::string_view> properties_;
};

}  // namespace

std::unique_ptr<rules::Rule> MakeSimilarNameRule(const LintContext& context) {
  return std::make_unique<SimilarNameRule>(context);
}
std::unique_ptr<rules::Rule> MakeNameOfTwoKindsRule(const LintContext& context) {
  return std::make_unique<NameOfTwoKindsRule>(context);
}
std::unique_ptr<rules::Rule> MakeNamePatternRule(const LintContext& context) {
  if (context.settings.names.empty()) return nullptr;
  return std::make_unique<NamePatternRule>(context);
}
std::unique_ptr<rules::Rule> MakeSensorSettingsRule(const LintContext& context) {
  if (context.settings.ids.empty() && context.settings.sensor_properties.empty()) return nullptr;
  return std::make_unique<SensorSettingsRule>(context);
}

}  // namespace rux::lint
