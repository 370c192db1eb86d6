// Trees of groups that are not what they seem.
#include <fmt/format.h>

#include <optional>
#include <unordered_map>

#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

constexpr std::string_view kRoot = "0";

// "2 groups have"
std::string Having(std::uint32_t groups) {
  if (groups == 0) return "no group has";
  return groups == 1 ? "1 group has" : fmt::format("{} groups have", groups);
}

class GroupTraps : public TrapRules {
 public:
  GroupTraps(const DefinedWordTable& words, TrapReport& report) : words_(words), report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t kind) override {
    if (kind != compiled::kKindGROUP) return false;
    groups_.emplace_back();
    return true;
  }

  void See(const ScriptItem& item) override {
    Group& group = groups_.back();
    if (item.key == compiled::kKeyPARENT) ++children_[item.first()];
    if (item.key == compiled::kKeyCHILDGROUP) {
      group.count = item.first();
      group.count_item.emplace(item);
    }
    if (item.key != compiled::kKeyNAME) return;
    group.name = item.first();
    if (group.name == kRoot) {
      report_.Add(kRootGroup, item, "a group named 0 is the root of the tree itself");
    }
  }

  void End(const sources::SourceSet&) override {
    for (const Group& group : groups_) {
      if (!group.count_item || group.name.empty()) continue;
      const auto found = children_.find(group.name);
      const std::uint32_t children = found == children_.end() ? 0 : found->second;
      const auto count = words_.WordOrNumber(group.count);
      // Some only tell whether there are groups below.
      if (!count || *count == children || (*count == 1 && children > 0)) continue;
      report_.Add(kChildgroupMismatch, group.count_item->Shown(),
                  fmt::format("CHILDGROUP is {}, but {} {} for a PARENT", group.count,
                              Having(children), group.name),
                  group.count);
    }
  }

 private:
  struct Group {
    std::string_view name;
    std::string_view count;
    std::optional<SeenItem> count_item;
  };

  const DefinedWordTable& words_;
  TrapReport& report_;
  std::vector<Group> groups_;
  std::unordered_map<std::string_view, std::uint32_t> children_;  // by the parent's name
};

}  // namespace

std::unique_ptr<TrapRules> MakeGroupTraps(const DefinedWordTable& words, TrapReport& report) {
  return std::make_unique<GroupTraps>(words, report);
}

}  // namespace rux::rules
