#include "page/contents.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "compiled/datum.h"
#include "diagnostics/diagnostic.h"
#include "diff/change.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "machine/value.h"
#include "page/html.h"
#include "page/sources.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {
namespace {

bool IsBefore(const machine::Place& a, const machine::Place& b) {
  return std::tie(a.path, a.line) < std::tie(b.path, b.line);
}

}  // namespace

Contents::Contents(const machine::Machine& machine, Background background)
    : machine_(machine),
      background_(std::move(background)),
      relations_(machine),
      findings_(relations_.things().size()),
      changes_(relations_.things().size()) {
  PlaceFindings();
  PlaceChanges();
}

std::string Contents::Title() const {
  if (!background_.title.empty()) return background_.title;
  for (const ruxcomp::Section system : machine_.model().sections(RUX_SECT_SYSTEM)) {
    const std::string_view model = system.entry(RUX_ENTRY_MODEL).value().text();
    if (!model.empty()) return std::string(model);
  }
  return background_.file;
}

Contents::Range Contents::Of(language::SectionId kind) const {
  const std::vector<browse::Thing>& things = relations_.things();
  const auto is_before = [](const browse::Thing& thing, language::SectionId wanted) {
    return thing.kind->source < wanted;
  };
  const auto is_after = [](language::SectionId wanted, const browse::Thing& thing) {
    return wanted < thing.kind->source;
  };
  return {static_cast<Thing>(std::lower_bound(things.begin(), things.end(), kind, is_before) -
                             things.begin()),
          static_cast<Thing>(std::upper_bound(things.begin(), things.end(), kind, is_after) -
                             things.begin())};
}

std::size_t Contents::OrdinalOf(Thing thing) const {
  return std::get<1>(relations_.PositionOf(thing));
}

ruxcomp::Section Contents::SectionOf(Thing thing) const {
  return machine_.model().sections(At(thing).kind->compiled)[OrdinalOf(thing)];
}

std::vector<ruxcomp::Entry> Contents::EntriesOf(Thing thing) const {
  const std::size_t number = std::get<2>(relations_.PositionOf(thing));
  const ruxcomp::Entries entries = SectionOf(thing).entries();
  if (number != browse::MachineRelations::kWhole) return {entries[number]};
  std::vector<ruxcomp::Entry> all;
  all.reserve(entries.size());
  for (const ruxcomp::Entry entry : entries) all.push_back(entry);
  return all;
}

const std::optional<Excerpt>& Contents::ExcerptOf(Thing thing) const {
  const auto [known, is_new] = excerpts_.try_emplace(thing);
  if (is_new) {
    const browse::Thing& what = At(thing);
    known->second = background_.sources.Of(*what.kind, OrdinalOf(thing), what.key, what.place);
  }
  return known->second;
}

std::optional<std::string> Contents::AmountOf(Thing thing, const ruxcomp::Entry& entry) const {
  const language::EntryRow* row = language::FindCompiledEntryRow(entry.identifier());
  const auto& limits = language::kLimitsUpwards;
  if (row == nullptr ||
      std::find(std::begin(limits), std::end(limits), row->source) == std::end(limits))
    return std::nullopt;
  const compiled::Datum datum = machine::DatumOf(entry.value());
  if (!datum.IsNumber()) return std::nullopt;
  return machine_.QuantityOf(SectionOf(thing)).TextOf(datum.number);
}

std::string Contents::PathText(const std::string& path) const {
  const std::string& folder = background_.folder;
  if (path.compare(0, folder.size(), folder) == 0) return path.substr(folder.size());
  const std::filesystem::path file(path);
  return file.is_absolute() ? file.filename().string() : path;
}

std::string Contents::PlaceText(const machine::Place& place) const {
  return fmt::format("{}:{}", PathText(place.path), place.line);
}

std::vector<Thing> Contents::UsersOf(Thing thing) const {
  // So that the cost stays within a part of the machine, whatever refers to what in it.
  constexpr std::size_t kMostLinks = 2000;
  std::set<Thing> known = {thing};
  std::vector<Thing> users = {thing};
  std::size_t links = 0;
  for (std::size_t i = 0; i < users.size(); ++i) {
    for (const browse::Link* link : relations_.To(users[i])) {
      if (users.size() > kMostUsers || ++links > kMostLinks) break;
      if (!link->is_membership && known.insert(link->from).second) users.push_back(link->from);
    }
  }
  users.erase(users.begin());
  return users;
}

const std::vector<ruxcomp::Entry>& Contents::ValuesOf(Thing thing) const {
  const auto [known, is_new] = values_.try_emplace(thing);
  std::vector<ruxcomp::Entry>& values = known->second;
  if (!is_new) return values;
  for (const ruxcomp::Entry& entry : EntriesOf(thing)) {
    if (IsValue(entry)) values.push_back(entry);
  }
  const std::optional<Excerpt>& source = ExcerptOf(thing);
  if (!source || values.size() < 2) return values;
  const ruxcomp::Section section = SectionOf(thing);
  std::vector<std::pair<std::size_t, ruxcomp::Entry>> placed;
  for (const ruxcomp::Entry& entry : values) {
    const Excerpt::Item* item = source->Find(machine::KeyOf(section, entry));
    placed.emplace_back(item == nullptr ? 0 : item->ordinal, entry);
  }
  std::stable_sort(placed.begin(), placed.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 0; i < placed.size(); ++i) values[i] = placed[i].second;
  return values;
}

std::optional<Thing> Contents::ThingOf(const diagnostics::Diagnostic& finding) const {
  const machine::Place place{finding.at.path, finding.at.line()};
  const auto after = std::upper_bound(places_.begin(), places_.end(), place,
                                      [](const machine::Place& wanted, const auto& known) {
                                        return IsBefore(wanted, known.first);
                                      });
  if (after == places_.begin() || after[-1].first.path != place.path) return std::nullopt;
  // It may be in a section that is not a part of the compiled machine.
  const Thing thing = after[-1].second;
  if (finding.section && *finding.section != At(thing).kind->keyword) return std::nullopt;
  return thing;
}

void Contents::PlaceFindings() {
  if (!background_.report) return;
  for (Thing thing = 0; thing < relations_.things().size(); ++thing) {
    if (At(thing).place) places_.emplace_back(*At(thing).place, thing);
  }
  std::stable_sort(places_.begin(), places_.end(),
                   [](const auto& a, const auto& b) { return IsBefore(a.first, b.first); });
  for (const diagnostics::Diagnostic& finding : background_.report->diagnostics) {
    if (const std::optional<Thing> thing = ThingOf(finding)) findings_[*thing].push_back(&finding);
  }
}

std::optional<Thing> Contents::ThingOf(const diff::Change& change) const {
  const bool has_keys = change.kind->naming == language::Naming::kByKeys;
  if (has_keys)
    return change.after.text ? relations_.FindKey(change.kind, change.entry) : std::nullopt;
  const ruxcomp::Model& model = machine_.model();
  const std::uint32_t kind = change.kind->compiled;
  ruxcomp::Section section;
  if (change.after.name) section = model.section_named(kind, *change.after.name);
  if (!section && change.after.id) section = model.section_with_id(kind, *change.after.id);
  const bool is_single = change.kind->uniqueness == language::Uniqueness::kSingle;
  if (!section && is_single && change.kind->IsCompiled()) section = model.sections(kind)[0];
  if (!section) return std::nullopt;
  return relations_.NumberAt({change.kind, section.ordinal(), browse::MachineRelations::kWhole});
}

void Contents::PlaceChanges() {
  if (!background_.changes) return;
  for (const diff::Change& change : *background_.changes) {
    if (const std::optional<Thing> thing = ThingOf(change)) changes_[*thing].push_back(&change);
  }
}

bool IsValue(const ruxcomp::Entry& entry) {
  switch (language::ClassOf(entry.identifier())) {
    case RUX_CLASS_Repeater:
    case RUX_CLASS_Value:
    case RUX_CLASS_Global:
      return true;
    default:
      return false;
  }
}

std::string NameOf(const browse::Thing& thing) {
  if (thing.name) return *thing.name;
  if (!thing.key.empty()) return thing.key;
  return thing.id ? fmt::format("#0x{:X}", *thing.id) : thing.kind->keyword;
}

void WriteLink(const Contents& contents, Thing thing, Html& out) {
  out << "<a href=#t" << thing << ">" << Text{NameOf(contents.At(thing))} << "</a>";
}

void WriteFullLink(const Contents& contents, Thing thing, Html& out) {
  out << "<small>" << Text{contents.At(thing).kind->keyword} << "</small> ";
  WriteLink(contents, thing, out);
}

}  // namespace rux::page
