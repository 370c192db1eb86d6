// PELMGROUPs that are compiled in part, or whose sensors are not what they seem.
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "tool/traps/number_text.h"
#include "tool/traps/trap_rules.h"

namespace rux {
namespace {

constexpr std::string_view kProperty = "P_";

// The names of properties that the compiler knows.
std::unordered_set<std::string_view> KnownProperties(const SourceView& sources) {
  std::unordered_set<std::string_view> names;
  for (const SourceSection& section : sources.sections()) {
    const std::string_view kind = section.section->name;
    const bool is_property = kind == "PROPERTY";
    if (!is_property && kind != "SENSOR" && kind != "DEVICE" && kind != "SYSTEM") continue;
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const std::string_view key = section.section->items[i].key;
      if (is_property) names.insert(key);
      if (HasPrefix(key, kProperty)) names.insert(key.substr(kProperty.size()));
    }
  }
  return names;
}

class PelmgroupTraps : public TrapRules {
 public:
  PelmgroupTraps(const DefinedWordTable& words, TrapReport& report)
      : words_(words), report_(report) {}

  bool BeginSection(const SourceSection&, std::uint32_t kind) override {
    if (kind != kKindPELMGROUP) return false;
    groups_.emplace_back();
    return true;
  }

  void See(const ScriptItem& item) override {
    if (item.key == kKeyID) {
      groups_.back().id = words_.WordOrNumber(item.first());
      groups_.back().id_item.emplace(item);
    }
    if (item.key == kKeyPID) {
      groups_.back().parent = words_.WordOrNumber(item.first());
      groups_.back().parent_item.emplace(item);
    }
    if (item.key == kKeyP) properties_.emplace_back(item);
    if (item.key == kKeySENSORS) SeeSensors(item);
  }

  void End(const SourceView& sources) override {
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
      report_.Add(MessageId::kEmptySensors, item, "the list is empty: the group has no sensors");
    }
    const std::size_t list = lists_.size();
    lists_.emplace_back(item);
    for (const std::string_view text : item.parts) {
      const NumberText number = ReadNumber(text);
      if (number.is_number) {
        listed_.push_back({number.value, list, text});
      } else if (words_.Find(text)) {
        report_.Add(MessageId::kSensorsWord, item,
                    fmt::format("{} is a word: the compiled list ends before it", text), text);
        return;
      }
    }
  }

  void TellProperties(const SourceView& sources) {
    if (properties_.empty()) return;
    const auto known = KnownProperties(sources);
    const reader::Section* told = nullptr;
    for (const SeenItem& property : properties_) {
      const std::string_view key = property.item->key;
      if (!HasPrefix(key, kProperty) || known.count(key.substr(kProperty.size())) != 0) continue;
      if (property.section == told) continue;  // it ends at the first one
      told = property.section;
      report_.Add(MessageId::kPelmgroupProperty, property.Shown(),
                  "this property is not compiled, nor is what stands below it in the section");
    }
  }

  // A group with the ID 0, and another one that seems to hang below it.
  void TellRootIds() {
    for (const Group& group : groups_) {
      if (group.id != 0U) continue;
      const auto below = std::find_if(groups_.begin(), groups_.end(), [&](const Group& other) {
        return &other != &group && other.parent == 0U;
      });
      if (below == groups_.end()) continue;
      Diagnostic& warning =
          report_.Add(MessageId::kRootPelmgroup, group.id_item->Shown(),
                      "a PID of 0 means that there is none above: no group hangs below this one");
      AddPlace(warning, "has none above",
               {below->parent_item->file, below->parent_item->item->line});
    }
  }

  void TellLoops() {
    std::unordered_map<std::uint32_t, std::uint32_t> parents;
    for (const Group& group : groups_) {
      if (group.id && group.parent) parents.try_emplace(*group.id, *group.parent);
    }
    for (const Group& group : groups_) {
      if (!group.id || !group.parent || !LeadsTo(*group.parent, *group.id, parents)) continue;
      report_.Add(MessageId::kPelmgroupLoop, group.parent_item->Shown(),
                  "the chain of parents leads back to this group");
    }
  }

  // Whether one comes from a group to another one by going up.
  static bool LeadsTo(std::uint32_t from, std::uint32_t to,
                      const std::unordered_map<std::uint32_t, std::uint32_t>& parents) {
    for (std::size_t steps = 0; steps <= parents.size() && from != 0; ++steps) {
      if (from == to) return true;
      const auto found = parents.find(from);
      if (found == parents.end()) return false;
      from = found->second;
    }
    return false;
  }

  void TellRepeated() {
    const auto by_id = [](const Listed& a, const Listed& b) { return a.id < b.id; };
    std::stable_sort(listed_.begin(), listed_.end(), by_id);
    for (std::size_t i = 1; i < listed_.size(); ++i) {
      const Listed& first = listed_[i - 1];
      const Listed& again = listed_[i];
      if (first.id != again.id) continue;
      const bool is_one_list = first.list == again.list;
      Diagnostic& warning =
          report_.Add(MessageId::kRepeatedSensor, lists_[again.list].Shown(),
                      fmt::format("the sensor {} is {}", again.text,
                                  is_one_list ? "twice in the list" : "in another list, too"),
                      again.text);
      if (!is_one_list) {
        AddPlace(warning, "listed here", {lists_[first.list].file, lists_[first.list].item->line});
      }
    }
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

}  // namespace rux
