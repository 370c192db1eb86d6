#include "page/effects.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "machine/machine.h"
#include "machine/value.h"
#include "page/bus_accesses.h"
#include "page/contents.h"
#include "page/html.h"
#include "page/value_flow.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {
namespace {

// So that the cost of an action stays within a part of the machine, whatever refers to what in it.
constexpr std::size_t kMostLinksOfAction = 2000;

bool HasShape(const ruxcomp::Entry& entry, language::Shape shape) {
  if (!IsValue(entry)) return false;
  const machine::EntryValue value = machine::ValueOf(entry);
  return value.type && language::FindValueType(*value.type).shape == shape;
}

bool WritesToBus(const ruxcomp::Entry& entry) { return HasShape(entry, language::Shape::kBusArgs); }

// Where on which bus a value goes; empty for one that goes to none.
std::vector<std::string> BusPlaceOf(const ruxcomp::Entry& entry) {
  std::vector<std::string> place;
  for (const machine::EntryPart& part : machine::ValueOf(entry).parts) {
    const bool is_place = std::find(std::begin(kPlaceParts), std::end(kPlaceParts), part.name) !=
                          std::end(kPlaceParts);
    if (is_place && !part.items.empty())
      place.push_back(part.name + ' ' + inspect::ItemText(part.items.front(), false));
  }
  return place;
}

// Whether the action reads from a bus, itself or by a call, what it does not write: bits beside
// those that it sets decide nothing.
bool ReadsMoreThanItWrites(const Contents& contents, Thing action) {
  std::set<std::vector<std::string>> read;
  std::set<std::vector<std::string>> written;
  std::set<Thing> known = {action};
  std::vector<Thing> called = {action};
  for (std::size_t i = 0; i < called.size() && i < kMostLinksOfAction; ++i) {
    for (const ruxcomp::Entry& entry : contents.EntriesOf(called[i])) {
      if (HasShape(entry, language::Shape::kBus)) read.insert(BusPlaceOf(entry));
      if (called[i] == action && WritesToBus(entry)) written.insert(BusPlaceOf(entry));
    }
    for (const browse::Link* link : contents.relations().From(called[i])) {
      const bool is_action = contents.Is(link->to, language::SECTION_ACTION);
      if (is_action && known.insert(link->to).second) called.push_back(link->to);
    }
  }
  return !std::includes(written.begin(), written.end(), read.begin(), read.end());
}

// The entries outside of actions that call the action, directly or through others.
std::vector<const browse::Link*> CallsOf(const Contents& contents, Thing action) {
  std::vector<const browse::Link*> calls;
  std::set<Thing> known = {action};
  std::vector<Thing> called = {action};
  std::size_t count = 0;
  for (std::size_t i = 0; i < called.size(); ++i) {
    for (const browse::Link* link : contents.relations().To(called[i])) {
      if (++count > kMostLinksOfAction) return calls;
      if (!contents.Is(link->from, language::SECTION_ACTION)) {
        calls.push_back(link);
      } else if (known.insert(link->from).second) {
        called.push_back(link->from);
      }
    }
  }
  return calls;
}

// Readings call actions too, which may have to write in order to read.
bool IsForEffect(const Contents& contents, const browse::Link& call) {
  if (contents.Is(call.from, language::SECTION_GLOBAL)) return false;
  return !contents.Is(call.from, language::SECTION_SENSOR) || call.key != language::kPlainValue;
}

// The actions by which the machine does something: that write to a bus, themselves or by a call,
// and not in order to read.
std::set<Thing> FindWriters(const Contents& contents) {
  std::vector<Thing> found;
  const Contents::Range actions = contents.Of(language::SECTION_ACTION);
  for (Thing action = actions.begin; action < actions.end; ++action) {
    const std::vector<ruxcomp::Entry> entries = contents.EntriesOf(action);
    if (!std::any_of(entries.begin(), entries.end(), WritesToBus)) continue;
    const std::vector<const browse::Link*> calls = CallsOf(contents, action);
    const bool is_for_effect = std::all_of(
        calls.begin(), calls.end(), [&](const auto* call) { return IsForEffect(contents, *call); });
    if (is_for_effect) found.push_back(action);
  }
  std::set<Thing> writers(found.begin(), found.end());
  for (std::size_t i = 0; i < found.size(); ++i) {
    for (const browse::Link* link : contents.relations().To(found[i])) {
      const bool is_call = contents.Is(link->from, language::SECTION_ACTION);
      if (is_call && writers.insert(link->from).second) found.push_back(link->from);
    }
  }
  return writers;
}

// What all of the sensors measure in; empty when they differ, or one is not known.
std::string UnitOf(const Contents& contents, const std::vector<Thing>& sensors) {
  std::string unit;
  for (const Thing sensor : sensors) {
    if (!contents.Is(sensor, language::SECTION_SENSOR)) return "";
    const machine::Quantity own = contents.machine().QuantityOf(contents.SectionOf(sensor));
    const bool is_whole = own.unit && own.divisor.value_or(1) == 1;
    if (!is_whole || (!unit.empty() && *own.unit != unit)) return "";
    unit = *own.unit;
  }
  return unit;
}

// The sensors that show what the calls depend on, in the end; a global that no sensor shows.
class Deciders {
  static constexpr std::size_t kMostConditions = 4;

 public:
  // `links` are counted for all runs of an action.
  Deciders(const Contents& contents, std::size_t& links) : contents_(contents), links_(links) {}

  void Add(const browse::Link& call) {
    for (const browse::Link* link : contents_.relations().From(call.from)) {
      if (link->key == call.key) Follow(link->to);
    }
    while (!used_.empty()) {
      const Thing thing = used_.back();
      used_.pop_back();
      bool is_last = true;
      for (const browse::Link* link : contents_.relations().From(thing)) {
        if (++links_ > kMostLinksOfAction) return;
        if (link->is_membership) continue;
        is_last = is_last && !contents_.Is(link->to, language::SECTION_GLOBAL);
        Follow(link->to);
      }
      if (contents_.Is(thing, language::SECTION_SENSOR)) found_.insert(thing);
      if (is_last && contents_.Is(thing, language::SECTION_GLOBAL)) AddReading(thing);
    }
  }

  Effect::Run TakeFor(const browse::Link& call) {
    return {
        &call, {found_.begin(), found_.end()}, std::move(conditions_), links_ > kMostLinksOfAction};
  }

 private:
  void Follow(Thing thing) {
    const bool is_reading = contents_.Is(thing, language::SECTION_GLOBAL) ||
                            contents_.Is(thing, language::SECTION_SENSOR);
    if (!is_reading || !known_.insert(thing).second) return;
    used_.push_back(thing);
    if (conditions_.size() < kMostConditions && IsCondition(thing)) conditions_.push_back(thing);
  }

  // Whether a global compares something with a number.
  bool IsCondition(Thing thing) const {
    if (!contents_.Is(thing, language::SECTION_GLOBAL)) return false;
    const machine::EntryValue value = machine::ValueOf(contents_.EntriesOf(thing).front());
    bool has_number = false;
    bool has_results = false;
    for (const machine::EntryPart& part : value.parts) {
      has_results = has_results || part.name == "Result";
      for (const compiled::Datum& item : part.items)
        has_number = has_number || (part.name == "Operand" && item.IsNumber());
    }
    return has_number && has_results;
  }

  void AddReading(Thing global) {
    bool is_shown = false;
    for (const browse::Link* link : contents_.relations().To(global)) {
      if (++links_ > kMostLinksOfAction) break;
      if (!contents_.Is(link->from, language::SECTION_SENSOR)) continue;
      found_.insert(link->from);
      is_shown = true;
    }
    if (!is_shown) found_.insert(global);
  }

  const Contents& contents_;
  std::set<Thing> known_;
  std::vector<Thing> used_;
  std::set<Thing> found_;
  std::vector<Thing> conditions_;
  std::size_t& links_;
};

}  // namespace

Effects::Effects(const Contents& contents) {
  for (const Thing action : FindWriters(contents)) AddAction(contents, action);
  AddWrites(contents);
}

void Effects::AddAction(const Contents& contents, Thing action) {
  Effect effect{action, ReadsMoreThanItWrites(contents, action), {}};
  std::size_t links = 0;
  for (const browse::Link* call : CallsOf(contents, action)) {
    Deciders deciders(contents, links);
    deciders.Add(*call);
    effect.runs.push_back(deciders.TakeFor(*call));
  }
  if (effect.runs.empty()) return;
  std::set<Thing> readings;
  std::set<Thing> callers;
  for (const Effect::Run& run : effect.runs) {
    readings.insert(run.deciders.begin(), run.deciders.end());
    callers.insert(run.call->from);
  }
  for (const Thing reading : readings) decided_by_[reading].push_back(effects_.size());
  for (const Thing caller : callers) run_by_[caller].push_back(effects_.size());
  effects_.push_back(std::move(effect));
}

void Effects::AddWrites(const Contents& contents) {
  for (Thing thing = 0; thing < contents.relations().things().size(); ++thing) {
    if (contents.Is(thing, language::SECTION_ACTION)) continue;
    const ruxcomp::Section section = contents.SectionOf(thing);
    for (const ruxcomp::Entry& entry : contents.EntriesOf(thing)) {
      // A sensor may have to write in order to read.
      const bool is_reading = contents.Is(thing, language::SECTION_SENSOR) &&
                              machine::KeyOf(section, entry) == language::kPlainValue;
      if (!is_reading && WritesToBus(entry)) writes_.push_back({thing, entry});
    }
  }
}

const Effect* Effects::Of(Thing action) const {
  const auto found =
      std::lower_bound(effects_.begin(), effects_.end(), action,
                       [](const Effect& effect, Thing wanted) { return effect.action < wanted; });
  return found != effects_.end() && found->action == action ? &*found : nullptr;
}

std::vector<const Effect*> Effects::Those(const Places& places, Thing thing) const {
  std::vector<const Effect*> those;
  const auto found = places.find(thing);
  if (found == places.end()) return those;
  for (const std::size_t place : found->second) those.push_back(&effects_[place]);
  return those;
}

void WriteCaller(const Contents& contents, const Effect::Run& run, Html& out) {
  const browse::Link& call = *run.call;
  WriteFullLink(contents, call.from, out);
  if (call.key != contents.At(call.from).key) out << " " << Text{call.key};
  const ruxcomp::Section section = contents.SectionOf(call.from);
  for (const ruxcomp::Entry& entry : contents.EntriesOf(call.from)) {
    if (machine::KeyOf(section, entry) != call.key) continue;
    out << " <code>";
    WritePieces(PiecesOf(contents, entry), out);
    out << "</code>";
  }
}

void WriteDeciders(const Contents& contents, const Effect& effect, const Effect::Run& run,
                   Html& out) {
  WriteSomeLinks(contents, run.deciders, out);
  if (run.deciders.empty()) {
    const char* const what = effect.reads ? "what it reads itself" : "nothing measured";
    out << Text{run.is_cut ? "too much to list" : what};
  } else if (run.is_cut) {
    out << " and more";
  }
  if (run.conditions.empty()) return;
  const std::string unit = UnitOf(contents, run.deciders);
  if (!unit.empty()) out << " (" << Text{unit} << ")";
  out << ": ";
  WriteConditions(contents, run, out);
}

void WriteConditions(const Contents& contents, const Effect::Run& run, Html& out) {
  for (const Thing& condition : run.conditions) {
    if (&condition != &run.conditions.front()) out << "; ";
    WriteLink(contents, condition, out);
    out << " = <code>";
    WritePieces(PiecesOf(contents, contents.EntriesOf(condition).front()), out);
    out << "</code>";
  }
}

void WriteSomeLinks(const Contents& contents, const std::vector<Thing>& things, Html& out) {
  constexpr std::size_t kMost = 12;
  for (std::size_t i = 0; i < things.size() && i < kMost; ++i) {
    if (i > 0) out << ", ";
    if (contents.Is(things[i], language::SECTION_SENSOR)) {
      WriteLink(contents, things[i], out);
    } else {
      WriteFullLink(contents, things[i], out);
    }
  }
  if (things.size() >= Contents::kMostUsers) {
    out << " and many more";
  } else if (things.size() > kMost) {
    out << " and " << things.size() - kMost << " more";
  }
}

}  // namespace rux::page
