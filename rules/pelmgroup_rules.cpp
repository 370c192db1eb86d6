// PELMGROUPs that are compiled in part, or whose tree is not what it seems.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "rules/loops.h"
#include "rules/pelmgroup_tree.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"

namespace rux::rules {
namespace {

using language::kPropertyPrefix;

// The entry whose keys name properties in a kind of sections; null when there is none.
const language::EntryRow* FindPropertyEntry(std::string_view section) {
  for (const language::KeySource& source : language::KeySourcesOf(language::CLASS_Property)) {
    if (section == language::KindOf(source.section).keyword) {
      return language::FindEntryRow(source.entry);
    }
  }
  return nullptr;
}

// The names of properties that the compiler knows.
TextSet KnownProperties(const Script& script) {
  TextSet names;
  for (const ScriptSection& section : script.sections()) {
    const language::EntryRow* entry = FindPropertyEntry(section.section->name);
    if (entry == nullptr) continue;
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const std::string_view key = section.section->items[i].key;
      if (language::BeginsWith(key, entry->prefix)) names.insert(NameInKey(*entry, key));
    }
  }
  return names;
}

class PelmgroupPropertyRule : public Rule {
 public:
  explicit PelmgroupPropertyRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return kind == language::SECTION_PELMGROUP && entry == language::ENTRY_P;
  }

  void Check(const ScriptItem& item) override {
    if (language::BeginsWith(item.name(), kPropertyPrefix)) properties_.push_back(item);
  }

  void EndScript(const Script& script) override {
    if (properties_.empty()) return;
    const TextSet known = KnownProperties(script);
    const ruxcomp::reader::Section* reported = nullptr;
    for (const ItemRef& property : properties_) {
      // Nothing of the section is compiled after the first one.
      const bool is_known = known.count(property.name().substr(kPropertyPrefix.size())) != 0;
      if (is_known || property.section == reported) continue;
      reported = property.section;
      context_.report.Add(RuleId::kPelmgroupProperty, property,
                          "this property is not compiled, nor are those below it in the section");
    }
  }

 private:
  const RuleContext context_;
  std::vector<ItemRef> properties_;
};

// For each, whether going up from it leads back to it.
std::vector<bool> FindLoops(const Parents& parents) {
  std::vector<Edge> edges;
  for (std::size_t i = 0; i < parents.size(); ++i) {
    const std::size_t above = FindParent(parents, i);
    if (above == parents.size()) continue;
    edges.push_back({static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(above)});
  }
  std::vector<bool> loops(parents.size());
  ForEachLoop(edges, static_cast<std::uint32_t>(parents.size()), [&](const Loop& loop) {
    for (const std::uint32_t edge : loop) loops[edges[edge].from] = true;
  });
  return loops;
}

class PelmgroupTreeRule : public Rule {
 public:
  explicit PelmgroupTreeRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return WantsSections(kind) && (entry == language::ENTRY_ID || entry == language::ENTRY_PID);
  }
  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_PELMGROUP;
  }

  void BeginSection(const ScriptSection&, language::SectionId) override { groups_.emplace_back(); }

  void Check(const ScriptItem& item) override {
    Given& given = item.entry == language::ENTRY_ID ? groups_.back().id : groups_.back().parent;
    given.number = context_.words.WordOrNumber(item.first());
    given.item = item;
  }

  void EndScript(const Script&) override {
    CheckRoots();
    CheckLoops();
  }

 private:
  struct Given {
    std::optional<std::uint32_t> number;
    std::optional<ItemRef> item;
  };
  struct Group {
    Given id;
    Given parent;
  };

  // A group with the ID 0, and another one that seems to be below it.
  void CheckRoots() {
    const auto has_none_above = [](const Group& group) { return group.parent.number == 0U; };
    const auto first = std::find_if(groups_.begin(), groups_.end(), has_none_above);
    if (first == groups_.end()) return;
    const auto second = std::find_if(first + 1, groups_.end(), has_none_above);
    for (const Group& group : groups_) {
      const auto below = &group == &*first ? second : first;
      if (group.id.number != 0U || below == groups_.end()) continue;
      context_.report
          .Add(RuleId::kRootPelmgroup, *group.id.item,
               "a PID of 0 means that there is no parent: no group is below this one",
               group.id.item->item->value)
          .Note("has no parent", below->parent.item->place());
    }
  }

  void CheckLoops() {
    Parents parents;
    for (const Group& group : groups_) {
      if (group.id.number && group.parent.number) {
        parents.emplace_back(*group.id.number, *group.parent.number);
      }
    }
    SortById(parents);
    const std::vector<bool> loops = FindLoops(parents);
    for (const Group& group : groups_) {
      if (!group.id.number || !group.parent.number) continue;
      if (!loops[FindId(parents, *group.id.number)]) continue;
      context_.report.Add(RuleId::kPelmgroupLoop, *group.parent.item,
                          "the chain of parents leads back to this group",
                          group.parent.item->item->value);
    }
  }

  const RuleContext context_;
  std::vector<Group> groups_;
};

}  // namespace

std::unique_ptr<Rule> MakePelmgroupPropertyRule(const RuleContext& context) {
  return std::make_unique<PelmgroupPropertyRule>(context);
}

std::unique_ptr<Rule> MakePelmgroupTreeRule(const RuleContext& context) {
  return std::make_unique<PelmgroupTreeRule>(context);
}

}  // namespace rux::rules
