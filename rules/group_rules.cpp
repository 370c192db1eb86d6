// Trees of groups that are not what they seem.
#include <fmt/format.h>

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
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

namespace rux::rules {
namespace {

// "2 child groups"
std::string ChildGroups(std::uint32_t groups) {
  if (groups == 0) return "no child groups";
  return groups == 1 ? "1 child group" : fmt::format("{} child groups", groups);
}

class ChildgroupRule : public Rule {
 public:
  explicit ChildgroupRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t) const override {
    return WantsSections(kind);
  }
  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_GROUP;
  }

  void BeginSection(const ScriptSection&, language::SectionId) override { groups_.emplace_back(); }

  void Check(const ScriptItem& item) override {
    Group& group = groups_.back();
    switch (item.entry) {
      case language::ENTRY_PARENT:
        ++children_[item.first()];
        return;
      case language::ENTRY_CHILDGROUP:
        group.count = item.first();
        group.count_item = item;
        return;
      case language::ENTRY_NAME:
        group.name = item.first();
        return;
      default:
        return;
    }
  }

  void EndScript(const Script&) override {
    for (const Group& group : groups_) {
      if (group.count_item && !group.name.empty()) CheckCount(group);
    }
  }

 private:
  struct Group {
    std::string_view name;
    std::string_view count;
    std::optional<ItemRef> count_item;
  };

  void CheckCount(const Group& group) {
    const auto found = children_.find(group.name);
    const std::uint32_t children = found == children_.end() ? 0 : found->second;
    const auto count = context_.words.WordOrNumber(group.count);
    // A count of 1 may say no more than that there are groups below.
    if (!count || *count == children || (*count == 1 && children > 0)) return;
    context_.report.Add(
        RuleId::kChildgroupMismatch, *group.count_item,
        [&] {
          return fmt::format("CHILDGROUP is {}, but {} has {}", group.count, group.name,
                             ChildGroups(children));
        },
        group.count);
  }

  const RuleContext context_;
  std::vector<Group> groups_;
  TextMap<std::uint32_t> children_;  // how many groups have that parent
};

}  // namespace

void CheckRootGroup(const ScriptItem& item, const RuleContext& context) {
  if (item.entry != language::ENTRY_NAME || item.first() != language::kRootGroup) return;
  context.report.Add(RuleId::kRootGroup, item, "a group named 0 is the root of the tree itself");
}

std::unique_ptr<Rule> MakeChildgroupRule(const RuleContext& context) {
  return std::make_unique<ChildgroupRule>(context);
}

}  // namespace rux::rules
