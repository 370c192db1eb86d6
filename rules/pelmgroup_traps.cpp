// PELMGROUPs that are compiled in part, or whose sensors are not what they seem.
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "rules/number_text.h"
#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

constexpr std::string_view kProperty = "P_";

// Whether something may follow the prefix.
bool IsProperty(std::string_view key) { return key.substr(0, kProperty.size()) == kProperty; }

// The names of properties that the compiler knows: keys of PROPERTY sections as they are, those of
// others behind their P_.
std::unordered_set<std::string_view> KnownProperties(const sources::SourceSet& sources) {
  std::unordered_set<std::string_view> names;
  for (const sources::SourceSection& section : sources.sections()) {
    const std::string_view kind = section.section->name;
    const bool is_property = kind == "PROPERTY";
    if (!is_property && kind != "SENSOR" && kind != "DEVICE" && kind != "SYSTEM") continue;
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const std::string_view key = section.section->items[i].key;
      if (is_property) {
        names.insert(key);
      } else if (IsProperty(key)) {
        names.insert(key.substr(kProperty.size()));
      }
    }
  }
  return names;
}

using Parents = std::unordered_map<std::uint32_t, std::uint32_t>;  // by ID

// The groups from which one comes back to them by going up.
std::unordered_set<std::uint32_t> FindLoops(const Parents& parents) {
  std::unordered_set<std::uint32_t> loops;
  std::unordered_map<std::uint32_t, std::uint32_t> walks;  // where each was met first
  for (const auto& [start, unused] : parents) {
    std::uint32_t at = start;
    auto found = parents.find(at);
    // Above 0 there is none.
    while (at != 0 && found != parents.end() && walks.try_emplace(at, start).second) {
      at = found->second;
      found = parents.find(at);
    }
    const auto met = walks.find(at);
    if (at == 0 || met == walks.end() || met->second != start) continue;
    while (loops.insert(at).second) at = parents.at(at);
  }
  return loops;
}

std::string TimesText(std::size_t times) {
  return times == 2 ? "twice" : fmt::format("{} times", times);
}

class PelmgroupTraps : public TrapRules {
 public:
  PelmgroupTraps(const DefinedWordTable& words, TrapReport& report)
      : words_(words), report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t kind) override {
    if (kind != compiled::kKindPELMGROUP) return false;
    groups_.emplace_back();
    return true;
  }

  void See(const ScriptItem& item) override {
    if (item.key == compiled::kKeyID) {
      groups_.back().id = words_.WordOrNumber(item.first());
      groups_.back().id_item.emplace(item);
    }
    if (item.key == compiled::kKeyPID) {
      groups_.back().parent = words_.WordOrNumber(item.first());
      groups_.back().parent_item.emplace(item);
    }
    if (item.key == compiled::kKeyP) properties_.emplace_back(item);
    if (item.key == compiled::kKeySENSORS) SeeSensors(item);
  }

  void End(const sources::SourceSet& sources) override {
    TellProperties(sources);
    TellRootIds();
    TellLoops();
    TellRepeated();
  }

 private:
  struct Group {
    std::optional<std::uint32_t> id;
    std::optional<std::uint32_t> parent;
    std::optional<SeenItem> id_item;
    std::optional<SeenItem> parent_item;
  };

  // A sensor where it is listed.
  struct Listed {
    std::uint32_t id;
    std::size_t list;  // in lists_
    std::string_view text;
  };

  void SeeSensors(const ScriptItem& item) {
    if (item.parts.empty()) {
      report_.Add(kEmptySensors, item, "the list is empty: the group has no sensors");
    }
    const std::size_t list = lists_.size();
    lists_.emplace_back(item);
    for (const std::string_view text : item.parts) {
      const NumberText number = ReadNumber(text);
      if (number.is_number) {
        listed_.push_back({number.value, list, text});
      } else if (words_.Find(text)) {
        report_.Add(kSensorsWord, item,
                    fmt::format("{} is a word: the compiled list ends before it", text), text);
        return;
      }
    }
  }

  void TellProperties(const sources::SourceSet& sources) {
    if (properties_.empty()) return;
    const auto known = KnownProperties(sources);
    const reader::Section* told = nullptr;
    for (const SeenItem& property : properties_) {
      const std::string_view key = property.item->key;
      if (!IsProperty(key) || known.count(key.substr(kProperty.size())) != 0) continue;
      if (property.section == told) continue;  // it ends at the first one
      told = property.section;
      report_.Add(kPelmgroupProperty, property.Shown(),
                  "this property is not compiled, nor are those below it in the section");
    }
  }

  // A group with the ID 0, and another one that seems to hang below it.
  void TellRootIds() {
    const auto has_none_above = [](const Group& group) { return group.parent == 0U; };
    const auto first = std::find_if(groups_.begin(), groups_.end(), has_none_above);
    if (first == groups_.end()) return;
    const auto second = std::find_if(first + 1, groups_.end(), has_none_above);
    for (const Group& group : groups_) {
      const auto below = &group == &*first ? second : first;
      if (group.id != 0U || below == groups_.end()) continue;
      diagnostics::Diagnostic& warning =
          report_.Add(kRootPelmgroup, group.id_item->Shown(),
                      "a PID of 0 means that there is none above: no group hangs below this one",
                      group.id_item->item->value);
      AddPlace(warning, "has none above",
               {below->parent_item->file, below->parent_item->item->line},
               below->parent_item->item->value);
    }
  }

  void TellLoops() {
    Parents parents;
    for (const Group& group : groups_) {
      if (group.id && group.parent) parents.try_emplace(*group.id, *group.parent);
    }
    const auto loops = FindLoops(parents);
    for (const Group& group : groups_) {
      if (!group.id || !group.parent || loops.count(*group.id) == 0) continue;
      report_.Add(kPelmgroupLoop, group.parent_item->Shown(),
                  "the chain of parents leads back to this group", group.parent_item->item->value);
    }
  }

  void TellRepeated() {
    const auto by_id = [](const Listed& a, const Listed& b) { return a.id < b.id; };
    std::stable_sort(listed_.begin(), listed_.end(), by_id);
    // The places of one sensor in one list stand together.
    for (auto first = listed_.begin(); first != listed_.end();) {
      const auto end = std::find_if(first, listed_.end(), [&](const Listed& other) {
        return other.id != first->id || other.list != first->list;
      });
      const auto times = static_cast<std::size_t>(end - first);
      const bool has_other = first != listed_.begin() && first[-1].id == first->id;
      if (has_other) TellAgain(*first, first[-1], "in another list, too");
      if (times > 1) TellAgain(first[1], *first, TimesText(times) + " in the list");
      first = end;
    }
  }

  void TellAgain(const Listed& again, const Listed& before, std::string_view where) {
    const SeenItem& other = lists_[before.list];
    diagnostics::Diagnostic& warning =
        report_.Add(kRepeatedSensor, lists_[again.list].Shown(),
                    fmt::format("the sensor {} is {}", again.text, where), again.text);
    AddPlace(warning, "listed here", {other.file, other.item->line}, before.text);
  }

  const DefinedWordTable& words_;
  TrapReport& report_;
  std::vector<Group> groups_;
  std::vector<SeenItem> properties_;
  std::vector<SeenItem> lists_;
  std::vector<Listed> listed_;
};

}  // namespace

std::unique_ptr<TrapRules> MakePelmgroupTraps(const DefinedWordTable& words, TrapReport& report) {
  return std::make_unique<PelmgroupTraps>(words, report);
}

}  // namespace rux::rules
