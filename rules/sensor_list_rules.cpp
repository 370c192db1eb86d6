// Lists of sensors that are not what they seem.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"

namespace rux::rules {
namespace {

std::string TimesText(std::size_t times) {
  return times == 2 ? "twice" : fmt::format("{} times", times);
}

class SensorListRule : public Rule {
 public:
  explicit SensorListRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return entry == language::ENTRY_SENSORS;
  }

  void Check(const ScriptItem& item) override {
    const std::size_t list = lists_.size();
    lists_.push_back(item);
    for (const std::string_view text : item.parts) {
      const language::Number number = language::ReadNumber(text);
      if (number.is_number) {
        listed_.push_back({number.value, list, text});
      } else if (context_.words.Find(text)) {
        return ReportWord(item, text);
      }
    }
  }

  void EndScript(const Script&) override {
    const auto by_id = [](const Listed& a, const Listed& b) { return a.id < b.id; };
    std::stable_sort(listed_.begin(), listed_.end(), by_id);
    // The places of one sensor in one list are neighbours now.
    for (auto first = listed_.begin(); first != listed_.end();) {
      const auto end = std::find_if(first, listed_.end(), [&](const Listed& other) {
        return other.id != first->id || other.list != first->list;
      });
      const auto times = static_cast<std::size_t>(end - first);
      const bool has_other = first != listed_.begin() && first[-1].id == first->id;
      if (has_other) ReportAgain(*first, first[-1], "in another list, too");
      if (times > 1) ReportAgain(first[1], *first, TimesText(times) + " in the list");
      first = end;
    }
  }

 private:
  // A sensor where it is listed.
  struct Listed {
    std::uint32_t id;
    std::size_t list;  // in lists_
    std::string_view text;
  };

  void ReportWord(const ScriptItem& item, std::string_view word) {
    context_.report.Add(
        RuleId::kSensorsWord, item,
        [&] { return fmt::format("{} is a word: the compiled list ends before it", word); }, word);
  }

  void ReportAgain(const Listed& again, const Listed& before, std::string_view where) {
    context_.report
        .Add(
            RuleId::kRepeatedSensor, lists_[again.list],
            [&] { return fmt::format("the sensor {} is {}", again.text, where); }, again.text)
        .Note("listed here", lists_[before.list], before.text);
  }

  const RuleContext context_;
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
