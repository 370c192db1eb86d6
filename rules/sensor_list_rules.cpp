// Lists of sensors that are not what they seem.
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

#include "rules/pelmgroup_tree.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "support/text_file.h"

namespace rux::rules {
namespace {

std::string TimesText(std::size_t times) {
  return times == 2 ? "twice" : fmt::format("{} times", times);
}

class SensorListRule : public Rule {
 public:
  explicit SensorListRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return WantsSections(kind) && (entry == language::ENTRY_SENSORS ||
                                   entry == language::ENTRY_ID || entry == language::ENTRY_PID);
  }
  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_PELMGROUP;
  }

  void BeginSection(const ScriptSection&, language::SectionId) override { groups_.emplace_back(); }

  void Check(const ScriptItem& item) override {
    if (item.entry == language::ENTRY_SENSORS) return CheckList(item);
    std::optional<std::uint32_t>& number =
        item.entry == language::ENTRY_ID ? groups_.back().id : groups_.back().parent;
    number = context_.words.WordOrNumber(item.first());
  }

  void EndScript(const Script&) override {
    const PelmgroupTree tree = MakeTree();
    const auto by_id = [](const Listed& a, const Listed& b) { return a.id < b.id; };
    std::stable_sort(listed_.begin(), listed_.end(), by_id);
    std::vector<Listed> lists;  // the first place of a sensor in each list
    for (auto first = listed_.begin(); first != listed_.end();) {
      lists.clear();
      const std::uint32_t id = first->id;
      while (first != listed_.end() && first->id == id) {
        lists.push_back(*first);
        first = CheckRepeated(first);
      }
      CheckShared(lists, tree);
    }
  }

 private:
  struct Group {
    std::optional<std::uint32_t> id;
    std::optional<std::uint32_t> parent;
  };
  // A sensor where it is listed.
  struct Listed {
    std::uint32_t id;
    std::size_t list;   // in lists_
    std::size_t group;  // in groups_
    std::string_view text;
  };
  using Spot = std::vector<Listed>::iterator;

  void CheckList(const ScriptItem& item) {
    const std::size_t list = lists_.size();
    lists_.push_back(item);
    for (const std::string_view text : item.parts) {
      const language::Number number = language::ReadNumber(text);
      if (number.is_number) {
        listed_.push_back({number.value, list, groups_.size() - 1, text});
      } else if (context_.words.Find(text)) {
        return ReportWord(item, text);
      }
    }
  }

  PelmgroupTree MakeTree() const {
    Parents parents;
    for (const Group& group : groups_) {
      if (group.id && group.parent) parents.emplace_back(*group.id, *group.parent);
    }
    return PelmgroupTree(std::move(parents));
  }

  // Of the places of one sensor, those in one list are neighbours. Returns the place after them.
  Spot CheckRepeated(Spot first) {
    const auto end = std::find_if(first, listed_.end(), [&](const Listed& other) {
      return other.id != first->id || other.list != first->list;
    });
    const auto times = static_cast<std::size_t>(end - first);
    if (times > 1) {
      Warning warning =
          ReportAgain(RuleId::kRepeatedSensor, first[1], *first, "in the list " + TimesText(times));
      OfferRemoval(first[1], warning);
    }
    return end;
  }

  // With the comma before it.
  void OfferRemoval(const Listed& listed, Warning& warning) const {
    const ScriptFile& file = *lists_[listed.list].file;
    const support::ByteRange range = file.RangeOf(listed.text);
    const std::size_t comma = file.text().rfind(',', range.begin);
    if (comma != std::string::npos) {
      warning.Offer({static_cast<std::uint32_t>(comma), range.end}, "");
    }
  }

  // A group and the groups above it may well list the same sensor: all lists of one are on one
  // way up when each is on the way up from the next deeper one.
  void CheckShared(std::vector<Listed>& lists, const PelmgroupTree& tree) {
    if (lists.size() < 2) return;
    const auto id_of = [&](const Listed& listed) { return groups_[listed.group].id; };
    const auto depth_of = [&](const Listed& listed) {
      return id_of(listed) ? tree.DepthOf(*id_of(listed)) : 0;
    };
    std::stable_sort(lists.begin(), lists.end(),
                     [&](const Listed& a, const Listed& b) { return depth_of(a) < depth_of(b); });
    for (std::size_t i = 1; i < lists.size(); ++i) {
      const auto above = id_of(lists[i - 1]);
      const auto below = id_of(lists[i]);
      if (above && below && tree.IsAbove(*above, *below)) continue;
      const bool is_later = lists[i].list > lists[i - 1].list;
      ReportAgain(RuleId::kSharedSensor, lists[is_later ? i : i - 1], lists[is_later ? i - 1 : i],
                  "also in the list of another group");
    }
  }

  void ReportWord(const ScriptItem& item, std::string_view word) {
    context_.report.Add(
        RuleId::kSensorsWord, item,
        [&] { return fmt::format("{} is a word: the compiled list ends before it", word); }, word);
  }

  Warning ReportAgain(RuleId rule, const Listed& again, const Listed& before,
                      std::string_view where) {
    return context_.report
        .Add(
            rule, lists_[again.list],
            [&] { return fmt::format("sensor {} is {}", again.text, where); }, again.text)
        .Note("listed here", lists_[before.list], before.text);
  }

  const RuleContext context_;
  std::vector<Group> groups_;
  std::vector<ItemRef> lists_;
  std::vector<Listed> listed_;
};

}  // namespace

void CheckEmptySensors(const ScriptItem& item, const RuleContext& context) {
  if (!item.parts.empty()) return;
  context.report.Add(RuleId::kEmptySensors, item, "the list is empty: the group has no sensors");
}

std::unique_ptr<Rule> MakeSensorListRule(const RuleContext& context) {
  return std::make_unique<SensorListRule>(context);
}

}  // namespace rux::rules
