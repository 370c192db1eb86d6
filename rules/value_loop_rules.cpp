// Globals, actions and values that lead back to themselves.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rules/loops.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/names.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::rules {
namespace {

using language::Role;

// What can be referred to: a global, a value of an action, an action.
struct Node {
  std::string_view name;
  std::optional<ItemRef> item;  // none of an action
};

// What a part of a value names. An action refers to its own values without naming them.
enum class Named : std::uint8_t { kNothing, kGlobal, kAction, kLocalValue };

struct Reference {
  std::uint32_t from;
  Named named;
  std::string_view name;
  std::uint32_t to;  // when it is known
};

class ValueLoopRule : public Rule {
 public:
  explicit ValueLoopRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    const bool is_value = language::PayloadOf(entry) == language::PAYLOAD_VALUE;
    if (kind == language::SECTION_GLOBAL) return is_value;
    return WantsSections(kind) && (is_value || entry == language::ENTRY_NAME);
  }
  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_ACTION;
  }

  void BeginSection(const ScriptSection&, language::SectionId) override {
    action_ = AddNode({});
    first_of_action_ = references_.size();
    local_values_.clear();
  }

  void Check(const ScriptItem& item) override {
    if (item.entry == language::ENTRY_NAME) {
      nodes_[action_].name = item.first();
      actions_.emplace(item.first(), action_);
      return;
    }
    const auto node = static_cast<std::uint32_t>(nodes_.size());
    const std::size_t first = references_.size();
    ForEachField(item, [&](std::string_view part, Role role) {
      const Named named = NamedBy(item, part, role);
      if (named != Named::kNothing) references_.push_back({node, named, part, kUnknown});
    });
    // What refers to nothing is part of no loop.
    if (references_.size() == first) return;
    AddNode({item.name(), item});
    if (item.IsIn(language::SECTION_ACTION)) {
      references_.push_back({action_, Named::kNothing, {}, node});
      local_values_.emplace(item.name(), node);
    } else {
      globals_.emplace(item.name(), node);
    }
  }

  void EndSection() override {
    for (std::size_t i = first_of_action_; i < references_.size(); ++i) {
      Reference& reference = references_[i];
      if (reference.named == Named::kLocalValue) Find(local_values_, reference);
    }
  }

  void EndScript(const Script&) override {
    FindTargets();
    std::vector<Edge> edges;
    edges.reserve(references_.size());
    for (const Reference& each : references_) edges.push_back({each.from, each.to});
    ForEachLoop(edges, static_cast<std::uint32_t>(nodes_.size()),
                [&](const Loop& loop) { Report(loop); });
  }

 private:
  static constexpr std::uint32_t kUnknown = 0xFFFFFFFF;

  std::uint32_t AddNode(const Node& node) {
    nodes_.push_back(node);
    return static_cast<std::uint32_t>(nodes_.size() - 1);
  }

  static void Find(const TextMap<std::uint32_t>& nodes, Reference& reference) {
    const auto found = nodes.find(reference.name);
    if (found != nodes.end()) reference.to = found->second;
  }

  // Keeps the first reference of each thing to each other one.
  void FindTargets() {
    for (Reference& reference : references_) {
      if (reference.named == Named::kGlobal) Find(globals_, reference);
      if (reference.named == Named::kAction) Find(actions_, reference);
    }
    const auto leads_nowhere = [](const Reference& each) { return each.to == kUnknown; };
    references_.erase(std::remove_if(references_.begin(), references_.end(), leads_nowhere),
                      references_.end());
    const auto ends_of = [](const Reference& each) { return std::pair(each.from, each.to); };
    const auto is_before = [&](const auto& a, const auto& b) { return ends_of(a) < ends_of(b); };
    const auto is_same = [&](const auto& a, const auto& b) { return ends_of(a) == ends_of(b); };
    std::stable_sort(references_.begin(), references_.end(), is_before);
    references_.erase(std::unique(references_.begin(), references_.end(), is_same),
                      references_.end());
  }

  Named NamedBy(const ScriptItem& item, std::string_view part, Role role) const {
    if (role == Role::kAction) return Named::kAction;
    if (role != Role::kOperand && role != Role::kLocalValue) return Named::kNothing;
    // A word stands for its number.
    if (context_.words.has_operand_names() && context_.words.Find(part)) return Named::kNothing;
    const language::NamedEntry* named = language::FindNamed(role, part);
    if (named == nullptr) return Named::kNothing;
    if (named->entry == language::ENTRY_G) return Named::kGlobal;
    const bool is_local =
        item.IsIn(named->section) && named->entry == language::ENTRY_VALUE_OF_ACTION;
    return is_local ? Named::kLocalValue : Named::kNothing;
  }

  void Report(const Loop& loop) {
    const Chain chain = ChainOf(loop);
    const Reference& first = *chain.shown.front();
    Warning warning = context_.report.Add(
        RuleId::kValueLoop, *nodes_[first.from].item,
        [&] { return "it depends on itself: " + TextOf(chain); }, first.name);
    for (std::size_t i = 1; i < chain.shown.size(); ++i) {
      const Reference& reference = *chain.shown[i];
      warning.Note(fmt::format("refers to {} here", reference.name), *nodes_[reference.from].item,
                   reference.name);
    }
  }

  // The references of a loop that a script spells out: the first ones, and the last one.
  struct Chain {
    std::vector<const Reference*> shown;
    bool is_cut = false;  // some are missing before the last one
  };

  // Loops may be long and many: what is not shown is not looked at.
  Chain ChainOf(const Loop& loop) const {
    constexpr std::size_t kMost = 8;
    Chain chain;
    const std::uint32_t* at = loop.begin();
    for (; at != loop.end() && chain.shown.size() < kMost; ++at) {
      const Reference& reference = references_[*at];
      if (reference.named != Named::kNothing) chain.shown.push_back(&reference);
    }
    // What leads back to the beginning names it.
    const Reference& last = references_[*(loop.end() - 1)];
    chain.is_cut = loop.end() - at > 1;
    if (chain.shown.back() != &last) chain.shown.push_back(&last);
    return chain;
  }

  // Where the chain comes back to, and from there on.
  static std::string TextOf(const Chain& chain) {
    std::string text(chain.shown.back()->name);
    for (const Reference* reference : chain.shown) {
      if (chain.is_cut && reference == chain.shown.back()) text += " -> ...";
      text += fmt::format(" -> {}", reference->name);
    }
    return text;
  }

  const RuleContext context_;
  std::vector<Node> nodes_;
  std::vector<Reference> references_;
  TextMap<std::uint32_t> globals_;
  TextMap<std::uint32_t> actions_;
  // Of the action that one is in.
  std::uint32_t action_ = 0;
  std::size_t first_of_action_ = 0;
  TextMap<std::uint32_t> local_values_;
};

}  // namespace

std::unique_ptr<Rule> MakeValueLoopRule(const RuleContext& context) {
  return std::make_unique<ValueLoopRule>(context);
}

}  // namespace rux::rules
