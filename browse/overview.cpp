#include "browse/overview.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "browse/limit.h"
#include "browse/refs.h"
#include "browse/relations.h"
#include "compiled/meta.h"
#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "inspect/meta_view.h"
#include "inspect/path.h"
#include "machine/groups.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "machine/value.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "support/wrap.h"

namespace rux::browse {

namespace {

std::string TableCommand(const std::string& keyword) {
  return "'rux table MACHINE --kind " + keyword + '\'';
}

// The kind of that keyword. Throws a Failure, which says what is meant when a section has that
// NAME.
const language::SectionKind& ExpectKind(const Relations& relations, const std::string& keyword) {
  if (const language::SectionKind* kind = FindKindInAnyCase(keyword)) {
    if (kind->IsCompiled()) return *kind;
    throw inspect::NotFound(fmt::format(
        "{} sections are not compiled; 'rux refs MACHINE NAME' shows words", kind->keyword));
  }
  for (const Thing& thing : relations.things()) {
    if (thing.name != keyword) continue;
    throw inspect::NotFound(fmt::format("no such kind: {}; did you mean {}/{}?",
                                        support::NameText(keyword), thing.kind->keyword,
                                        support::NameInPath(keyword)));
  }
  throw NoSuchKind(keyword);
}

}  // namespace

struct Overview::Item {
  std::string key;
  inspect::EntryValue value;
  std::optional<Limit> limit;
  std::optional<machine::Place> place;
};

Overview::Overview(const machine::Machine& machine, const std::string& path)
    : machine_(machine), relations_(machine), thing_(ThingAt(path)) {
  FindUsed();
}

std::size_t Overview::ThingAt(const std::string& path) const {
  const std::vector<inspect::PathStep> steps = inspect::ParsePath(path);
  const language::SectionKind& kind = ExpectKind(relations_, steps.front().text);
  const bool has_entries = kind.naming == language::Naming::kByKeys;
  const auto expect = [&](bool is_of_form) {
    if (is_of_form) return;
    throw support::Failure(support::ExitStatus::kWrongUsage, "{} must be {}/{}", path, kind.keyword,
                           has_entries ? "KEY" : "SECTION");
  };
  expect(steps.size() > 1 || kind.HasNames());
  const inspect::Found found = inspect::FindIn(machine_.model(), steps, TableCommand);
  expect(!found.part && found.entry.has_value() == has_entries);
  if (has_entries) return relations_.FindKey(found.kind, found.entry->key).value();
  return relations_.NumberAt({found.kind, found.ordinal, MachineRelations::kWhole});
}

void Overview::FindUsed() {
  std::set<std::size_t> known = {thing_};
  used_ = {thing_};
  for (std::size_t i = 0; i < used_.size(); ++i) {
    for (const Link* link : relations_.From(used_[i])) {
      if (!link->is_membership && known.insert(link->to).second) used_.push_back(link->to);
    }
  }
  used_.erase(used_.begin());
}

ruxcomp::Section Overview::SectionOf(std::size_t thing) const {
  const auto& [kind, ordinal, entry] = relations_.PositionOf(thing);
  return machine_.model().sections(kind->compiled)[ordinal];
}

std::vector<Overview::Item> Overview::ItemsOf(std::size_t thing) const {
  const std::size_t number = std::get<2>(relations_.PositionOf(thing));
  const ruxcomp::Entries entries = SectionOf(thing).entries();
  std::vector<Item> items;
  if (number != MachineRelations::kWhole) {
    items.push_back(ItemOf(thing, entries[number]));
  } else {
    for (const ruxcomp::Entry entry : entries) items.push_back(ItemOf(thing, entry));
  }
  return items;
}

Overview::Item Overview::ItemOf(std::size_t thing, const ruxcomp::Entry& entry) const {
  const auto& [kind, ordinal, number] = relations_.PositionOf(thing);
  const ruxcomp::Section section = SectionOf(thing);
  Item item{machine::KeyOf(section, entry), machine::NamedValueOf(machine_.model(), section, entry),
            LimitIn(machine_, section, entry), std::nullopt};
  item.place = machine_.PlaceOf(*kind, ordinal, item.key);
  return item;
}

const compiled::TableCells* Overview::CellsOf(std::size_t thing) const {
  const auto& [kind, ordinal, entry] = relations_.PositionOf(thing);
  const bool is_table = kind->source == language::SECTION_TABLE;
  return is_table ? machine_.model().table(static_cast<std::uint32_t>(ordinal)) : nullptr;
}

std::vector<const Thing*> Overview::Lists() const {
  std::vector<const Thing*> lists;
  for (const Link* link : relations_.To(thing_)) {
    const Thing& thing = relations_.things()[link->from];
    if (thing.kind->source == language::SECTION_PELMGROUP &&
        thing.kind != relations_.things()[thing_].kind)
      lists.push_back(&thing);
  }
  return lists;
}

void Overview::WriteItems(std::size_t thing, support::OutputStyle style,
                          support::TextStream& out) const {
  const std::vector<Item> items = ItemsOf(thing);
  std::size_t width = 0;
  for (const Item& item : items)
    width = std::max(width, support::Columns(support::SafeText(item.key)));
  for (const Item& item : items) {
    const std::string key = support::SafeText(item.key);
    out += "  " + key + std::string(width - support::Columns(key) + 2, ' ');
    std::vector<std::string> pieces = item.limit ? std::vector<std::string>{item.limit->Text()}
                                                 : inspect::ValuePieces(item.value);
    pieces.back() += PlaceText(item.place);
    out += support::WrappedPieces(pieces, style.width, width + 4) + '\n';
  }
  if (const compiled::TableCells* cells = CellsOf(thing)) out += inspect::CellsText(*cells);
}

void Overview::Write(support::OutputStyle style, support::TextStream& out) const {
  const auto write_title = [&](const Thing& thing) {
    out += support::Bold(thing.Title(), style.uses_colour) + PlaceText(thing.place) + '\n';
  };
  write_title(relations_.things()[thing_]);
  std::vector<std::string> groups = machine::GroupsOf(SectionOf(thing_));
  for (std::string& group : groups) group = support::SafeText(group);
  if (!groups.empty()) out += fmt::format("  in the group {}\n", fmt::join(groups, " / "));
  for (const Thing* list : Lists()) out += "  in the list of " + list->Title() + '\n';
  WriteItems(thing_, style, out);
  WriteLinks(relations_, thing_, out);
  for (const std::size_t used : used_) {
    out += '\n';
    write_title(relations_.things()[used]);
    WriteItems(used, style, out);
  }
}

void Overview::WriteItems(std::size_t thing, support::JsonObject& json) const {
  json.Objects("entries", ItemsOf(thing), [](support::JsonObject& object, const Item& item) {
    inspect::WriteEntry(object, item.key, item.value);
    machine::WritePlace(object, item.place);
    if (!item.limit) return;
    object.Object("limit", [&](support::JsonObject& limit) {
      limit.Member("number", item.limit->number);
      limit.Member("amount", item.limit->Amount());
      const machine::Quantity& quantity = item.limit->quantity;
      if (quantity.unit) limit.Member("unit", *quantity.unit);
      if (quantity.divisor) limit.Member("divisor", *quantity.divisor);
      if (quantity.is_signed) limit.Member("signed", *quantity.is_signed);
    });
  });
  if (const compiled::TableCells* cells = CellsOf(thing))
    json.Array("cells", [&](support::JsonArray& list) { list.Items(*cells); });
}

void Overview::Write(support::JsonObject& json) const {
  json.Schema(1);
  json.Member("file", machine_.name());
  WriteThing(json, relations_.things()[thing_]);
  json.Array("groups", [&](support::JsonArray& groups) {
    groups.Items(machine::GroupsOf(SectionOf(thing_)));
  });
  json.Objects("lists", Lists(),
               [](support::JsonObject& object, const Thing* list) { WriteThing(object, *list); });
  WriteItems(thing_, json);
  WriteLinks(relations_, thing_, json);
  json.Objects("uses", used_, [&](support::JsonObject& object, std::size_t used) {
    WriteThing(object, relations_.things()[used]);
    WriteItems(used, object);
  });
}

}  // namespace rux::browse
