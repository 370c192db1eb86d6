// Names that do not say what they seem to.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/model/hash_index.h"
#include "support/nearest.h"

namespace rux::rules {
namespace {

using language::HasPrefix;
using language::kPropertyPrefix;
using language::kValuePrefix;

// Hosts ask for properties and values by their names, which are the keys without their prefixes.
class SharedNameRule : public Rule {
 public:
  explicit SharedNameRule(const RuleContext& context) : report_(context.report) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return WantsSections(kind) &&
           (entry == language::ENTRY_P || language::PayloadOf(entry) == language::PAYLOAD_VALUE);
  }
  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_SENSOR || kind == language::SECTION_DEVICE;
  }

  void BeginSection(const ScriptSection&, language::SectionId) override {
    names_.Clear();
    known_.clear();
  }

  void Check(const ScriptItem& item) override {
    for (const std::string_view prefix : {kPropertyPrefix, kValuePrefix}) {
      if (HasPrefix(item.name(), prefix)) CheckName(item, prefix);
    }
  }

 private:
  struct Known {
    std::string_view prefix;
    ItemRef item;
  };

  void CheckName(const ScriptItem& item, std::string_view prefix) {
    const std::string_view name = item.name().substr(prefix.size());
    if (names_.Add(0, name, static_cast<std::uint32_t>(known_.size()))) {
      known_.push_back({prefix, item});
      return;
    }
    const Known& known = known_[names_.Find(0, name)];
    if (known.prefix == prefix) return;
    report_
        .Add(RuleId::kSharedName, item,
             [&] {
               return fmt::format("{} and {} have the same name for hosts: {}", known.item.name(),
                                  item.name(), name);
             })
        .Note("the other one", known.item.place());
  }

  RuleReport& report_;
  std::vector<Known> known_;  // the first item of each name in the section
  ruxcomp::detail::HashIndex<ruxcomp::detail::TextKey> names_;  // by these, their places in there
};

// The names after VALUE_ that have a meaning of their own in a SENSOR.
std::vector<std::string> HookNames() {
  std::vector<std::string> names;
  for (const auto& row : language::KindOf(language::SECTION_SENSOR).templates) {
    const std::string_view keyword = language::FindEntryRow(row.identifier)->keyword;
    if (HasPrefix(keyword, kValuePrefix)) names.emplace_back(keyword.substr(kValuePrefix.size()));
  }
  return names;
}

class MisspelledValueRule : public Rule {
 public:
  explicit MisspelledValueRule(const RuleContext& context) : report_(context.report) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return kind == language::SECTION_SENSOR && entry == language::ENTRY_VALUE_OF_SENSOR;
  }

  void Check(const ScriptItem& item) override {
    const std::string_view key = item.name();
    // Numbers distinguish values.
    const bool may_be_misspelled =
        HasPrefix(key, kValuePrefix) && std::none_of(key.begin(), key.end(), IsDigit);
    if (!may_be_misspelled || !known_.insert(key).second) return;
    const std::string name(key.substr(kValuePrefix.size()));
    const std::optional<std::string> meant = support::ClosestName(name, hooks_, 1);
    if (!meant) return;
    const std::string hook = std::string(kValuePrefix) + *meant;
    report_
        .Add(RuleId::kMisspelledValue, item,
             [&] { return fmt::format("{} is a value of this script's own, not {}", key, hook); })
        .Suggest(hook);
  }

 private:
  RuleReport& report_;
  const std::vector<std::string> hooks_ = HookNames();
  TextSet known_;  // the keys that were compared with them
};

}  // namespace

void CheckQuotedKey(const ScriptItem& item, const RuleContext& context) {
  if (item.name().front() != '"') return;
  context.report.Add(RuleId::kQuotedKey, item, "the quotes are part of the name");
}

void CheckPropertyPrefix(const ScriptItem& item, const RuleContext& context) {
  const std::string_view name = item.name();
  if (!HasPrefix(name, kPropertyPrefix)) return;
  context.report.Add(RuleId::kPropertyPrefix, item, [&] {
    return fmt::format("the name is {} here, not {} as in other sections", name,
                       name.substr(kPropertyPrefix.size()));
  });
}

void CheckNamelessEntry(const ScriptItem& item, const RuleContext& context) {
  // A property of a PELMGROUP with such a key is not compiled at all, see pelmgroup_rules.cpp.
  if (item.IsIn(language::SECTION_PELMGROUP)) return;
  const bool is_property = item.entry == language::ENTRY_P;
  if (item.name() != (is_property ? kPropertyPrefix : language::kGlobalPrefix)) return;
  context.report.Add(RuleId::kNamelessEntry, item, [&] {
    return fmt::format("nothing follows the {}: the name is empty", item.name());
  });
}

void CheckBareValueName(const ScriptItem& item, const RuleContext& context) {
  if (item.name() != kValuePrefix) return;
  context.report.Add(RuleId::kBareValueName, item,
                     "without a name after it, this is compiled as another VALUE");
}

std::unique_ptr<Rule> MakeSharedNameRule(const RuleContext& context) {
  return std::make_unique<SharedNameRule>(context);
}

std::unique_ptr<Rule> MakeMisspelledValueRule(const RuleContext& context) {
  return std::make_unique<MisspelledValueRule>(context);
}

}  // namespace rux::rules
