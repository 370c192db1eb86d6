// The GROUPs of a machine with their SENSORs, and its PELMGROUPs with those that they list.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "inspect/section_list.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "support/json.h"
#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/wrap.h"

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;

// A section of the tree, in the order of the lines.
struct Node {
  std::size_t ordinal;
  std::size_t depth;
};

// What an entry refers to, as a key of the sections that it may be: the text of a name, the number
// of an ID. Empty when the section does not have the entry.
std::string KeyOf(const FileView& view, const SectionKind& kind, std::size_t ordinal,
                  language::EntryId entry) {
  const auto value = view.EntryOf(kind, ordinal, std::string(language::KeywordOf(entry)));
  if (!value || value->parts.empty() || value->parts.front().items.empty()) return "";
  const compiled::Datum& datum = value->parts.front().items.front();
  return datum.IsNumber() ? std::to_string(datum.number) : datum.text;
}

// The sections of a kind, each after the one that its entry `parent` names by `name`. What is part
// of a loop begins a tree of its own.
std::vector<Node> TreeOf(const FileView& view, const SectionKind& kind, language::EntryId parent,
                         language::EntryId name) {
  const std::size_t count = view.CountOf(kind);
  std::map<std::string, std::size_t> by_name;
  for (std::size_t i = 0; i < count; ++i) by_name.emplace(KeyOf(view, kind, i, name), i);
  std::vector<std::vector<std::size_t>> children(count);
  std::vector<std::size_t> roots;
  for (std::size_t i = 0; i < count; ++i) {
    const auto found = by_name.find(KeyOf(view, kind, i, parent));
    std::vector<std::size_t>& siblings = found == by_name.end() ? roots : children[found->second];
    siblings.push_back(i);
  }
  std::vector<Node> tree;
  std::vector<bool> is_in_tree(count);
  std::vector<Node> waiting;
  const auto add_from = [&](std::size_t root) {
    waiting.push_back({root, 0});
    while (!waiting.empty()) {
      const Node node = waiting.back();
      waiting.pop_back();
      if (is_in_tree[node.ordinal]) continue;
      is_in_tree[node.ordinal] = true;
      tree.push_back(node);
      const std::vector<std::size_t>& below = children[node.ordinal];
      for (auto child = below.rbegin(); child != below.rend(); ++child)
        waiting.push_back({*child, node.depth + 1});
    }
  };
  for (const std::size_t root : roots) add_from(root);
  for (std::size_t i = 0; i < count; ++i) add_from(i);
  return tree;
}

const SectionKind& Groups() { return language::KindOf(language::SECTION_GROUP); }
const SectionKind& Sensors() { return language::KindOf(language::SECTION_SENSOR); }
const SectionKind& Lists() { return language::KindOf(language::SECTION_PELMGROUP); }

std::vector<Node> GroupTree(const FileView& view) {
  return TreeOf(view, Groups(), language::ENTRY_PARENT, language::ENTRY_NAME);
}

std::vector<Node> ListTree(const FileView& view) {
  return TreeOf(view, Lists(), language::ENTRY_PID, language::ENTRY_ID);
}

// The sensors of each group by its name.
std::map<std::string, std::vector<std::size_t>> SensorsByGroup(const FileView& view) {
  std::map<std::string, std::vector<std::size_t>> sensors;
  for (std::size_t i = 0; i < view.CountOf(Sensors()); ++i) {
    sensors[KeyOf(view, Sensors(), i, language::ENTRY_PARENT)].push_back(i);
  }
  return sensors;
}

// What a PELMGROUP lists.
std::vector<compiled::Datum> ListedBy(const FileView& view, std::size_t ordinal) {
  const auto value =
      view.EntryOf(Lists(), ordinal, std::string(language::KeywordOf(language::ENTRY_SENSORS)));
  return value && !value->parts.empty() ? value->parts.front().items
                                        : std::vector<compiled::Datum>();
}

// What a line of the tree names: an ID, if it has one, and a name.
struct Label {
  std::string id;
  std::string name;
};

Label LabelOf(const SectionLabel& section) {
  return {section.id ? fmt::format("0x{:X}", *section.id) : "",
          section.name ? support::NameText(*section.name) : fmt::format("@{}", section.ordinal)};
}

Label LabelOf(const compiled::Datum& listed) {
  return {fmt::format("0x{:X}", listed.number),
          listed.name.empty() ? "" : support::NameText(listed.name)};
}

// A line of its own, in two where it is too long. What is far down stays in the left half.
std::string Indented(std::size_t depth, const Label& label, support::OutputStyle style) {
  constexpr std::size_t kDeepest = 40;
  const std::size_t deepest = std::min(kDeepest, style.width / 4);
  const std::size_t indent = 2 * (std::min(depth, deepest) + 1);
  std::vector<std::string> pieces;
  for (const std::string& each : {label.id, label.name}) {
    if (!each.empty()) pieces.push_back(each);
  }
  pieces.front().insert(0, indent, ' ');
  std::string line = support::WrappedLine(pieces, style.width, indent + 2);
  if (style.uses_colour) {
    const std::size_t name = line.size() - label.name.size();
    line.replace(name, label.name.size(), support::Bold(label.name, true));
  }
  return line + '\n';
}

void WriteNode(support::JsonObject& json, const SectionLabel& label, std::size_t depth) {
  json.Member("ordinal", label.ordinal);
  json.Member("depth", depth);
  if (label.name) WriteText(json, "name", *label.name);
  if (label.id) json.Member("id", *label.id);
}

}  // namespace

std::string TreeText(const FileView& view, support::OutputStyle style) {
  const support::OutputStyle plain{style.width, false};
  std::string text = view.CountOf(Groups()) > 0 ? fmt::format("{}\n", Groups().keyword) : "";
  const auto sensors = SensorsByGroup(view);
  for (const Node& node : GroupTree(view)) {
    const SectionLabel label = view.LabelOf(Groups(), node.ordinal);
    text += Indented(node.depth, LabelOf(label), style);
    const auto own = sensors.find(label.name.value_or(""));
    if (own == sensors.end()) continue;
    for (const std::size_t sensor : own->second)
      text += Indented(node.depth + 1, LabelOf(view.LabelOf(Sensors(), sensor)), plain);
  }
  if (view.CountOf(Lists()) > 0) text += fmt::format("{}\n", Lists().keyword);
  for (const Node& node : ListTree(view)) {
    text += Indented(node.depth, LabelOf(view.LabelOf(Lists(), node.ordinal)), style);
    for (const compiled::Datum& listed : ListedBy(view, node.ordinal))
      text += Indented(node.depth + 1, LabelOf(listed), plain);
  }
  return text;
}

void WriteTree(support::JsonObject& json, const FileView& view) {
  const auto sensors = SensorsByGroup(view);
  json.Objects("groups", GroupTree(view), [&](support::JsonObject& group, const Node& node) {
    const SectionLabel label = view.LabelOf(Groups(), node.ordinal);
    WriteNode(group, label, node.depth);
    const auto own = sensors.find(label.name.value_or(""));
    const auto& list = own == sensors.end() ? std::vector<std::size_t>() : own->second;
    group.Objects("sensors", list, [&](support::JsonObject& sensor, std::size_t ordinal) {
      WriteLabel(sensor, view.LabelOf(Sensors(), ordinal));
    });
  });
  json.Objects("pelmgroups", ListTree(view), [&](support::JsonObject& list, const Node& node) {
    WriteNode(list, view.LabelOf(Lists(), node.ordinal), node.depth);
    list.Objects("sensors", ListedBy(view, node.ordinal),
                 [](support::JsonObject& sensor, const compiled::Datum& listed) {
                   sensor.Member("id", listed.number);
                   if (!listed.name.empty()) WriteText(sensor, "name", listed.name);
                 });
  });
}

}  // namespace rux::inspect
