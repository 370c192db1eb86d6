#include "page/actions.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <vector>

#include "browse/relations.h"
#include "machine/value.h"
#include "page/contents.h"
#include "page/html.h"
#include "page/value_flow.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"
#include "support/number_text.h"

namespace rux::page {
namespace {

// So that the cost of an action stays within a part of the machine, whatever refers to what in it.
constexpr std::size_t kMostLinksOfAction = 2000;

bool WritesToBus(const ruxcomp::Entry& entry) {
  if (!IsValue(entry)) return false;
  const machine::EntryValue value = machine::ValueOf(entry);
  return value.type && language::FindValueType(*value.type).shape == language::Shape::kBusArgs;
}

using Links = std::vector<const browse::Link*>;

// The entries outside of actions that call the action, directly or through others.
Links CallsOf(const Contents& contents, Thing action) {
  Links calls;
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
    const Links calls = CallsOf(contents, action);
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

// The sensors that show what the calls depend on, in the end; a global that no sensor shows.
class Deciders {
 public:
  explicit Deciders(const Contents& contents) : contents_(contents) {}

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

  std::vector<Thing> Take() const { return {found_.begin(), found_.end()}; }

 private:
  void Follow(Thing thing) {
    const bool is_reading = contents_.Is(thing, language::SECTION_GLOBAL) ||
                            contents_.Is(thing, language::SECTION_SENSOR);
    if (is_reading && known_.insert(thing).second) used_.push_back(thing);
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
  std::size_t links_ = 0;
};

class ActionTables {
 public:
  explicit ActionTables(const Contents& contents)
      : contents_(contents), writers_(FindWriters(contents)) {
    const Contents::Range actions = contents.Of(language::SECTION_ACTION);
    for (Thing action = actions.begin; action < actions.end; ++action) AddRow(action);
  }

  void Write(Html& out) const {
    if (!effects_.is_empty()) {
      WriteTable("what the machine does",
                 "What the machine does: actions that write to a bus, and what makes them run",
                 {"action", "run by", "decided by"}, effects_, out);
    }
    if (count_ == 0) return;
    const bool is_open = effects_.is_empty() && count_ <= kMostOpen;
    out << (is_open ? Html() << "<details open>" : Html() << "<details>") << "<summary>"
        << Text{support::CountText(count_, "action")}
        << (effects_.is_empty() ? Html() : Html() << " for readings") << "</summary>";
    WriteTable("actions", "Actions, and what calls them",
               {"action", "called by", "and through these by"}, others_, out);
    out << "</details>";
  }

 private:
  static constexpr std::size_t kMost = 12;      // that a cell names
  static constexpr std::size_t kMostOpen = 30;  // actions of a table that begins open

  static void WriteTable(const char* label, const char* caption,
                         const std::vector<const char*>& columns, const Html& rows, Html& out) {
    out << "<div class=scroll role=region tabindex=0 aria-label=\"" << Text{label}
        << "\"><table class=wide><caption>" << Text{caption} << "</caption><thead><tr>";
    for (const char* column : columns) out << "<th scope=col>" << Text{column};
    out << "<tbody>\n" << rows << "</table></div>";
  }

  void AddRow(Thing action) {
    const Links calls = CallsOf(contents_, action);
    const bool has_effect = writers_.count(action) > 0 && !calls.empty();
    Html& rows = has_effect ? effects_ : others_;
    if (!has_effect) ++count_;
    rows << "<tr><th scope=row>";
    WriteLink(contents_, action, rows);
    rows << "<td>";
    if (has_effect) {
      WriteEffects(calls, rows);
    } else {
      WriteCallers(action, rows);
    }
    rows << "\n";
  }

  void WriteEffects(const Links& calls, Html& out) const {
    Deciders deciders(contents_);
    out << "<ul>";
    for (std::size_t i = 0; i < calls.size(); ++i) {
      deciders.Add(*calls[i]);
      if (i < kMost) WriteCall(*calls[i], out);
    }
    if (calls.size() > kMost) out << "<li>and " << calls.size() - kMost << " more";
    out << "</ul><td>";
    WriteLinks(deciders.Take(), out);
  }

  void WriteCall(const browse::Link& call, Html& out) const {
    out << "<li>";
    WriteFullLink(contents_, call.from, out);
    if (call.key != contents_.At(call.from).key) out << " " << Text{call.key};
    const ruxcomp::Section section = contents_.SectionOf(call.from);
    for (const ruxcomp::Entry& entry : contents_.EntriesOf(call.from)) {
      if (machine::KeyOf(section, entry) != call.key) continue;
      out << " <code>";
      WritePieces(PiecesOf(contents_, entry), out);
      out << "</code>";
    }
  }

  void WriteCallers(Thing action, Html& out) const {
    std::set<Thing> callers;
    for (const browse::Link* link : contents_.relations().To(action)) callers.insert(link->from);
    std::vector<Thing> origins;
    for (const Thing user : contents_.UsersOf(action)) {
      const bool is_new = callers.find(user) == callers.end();
      if (is_new && !contents_.Is(user, language::SECTION_ACTION)) origins.push_back(user);
    }
    WriteLinks({callers.begin(), callers.end()}, out);
    if (callers.empty()) out << "nothing in this machine";
    out << "<td>";
    WriteLinks(origins, out);
  }

  void WriteLinks(const std::vector<Thing>& things, Html& out) const {
    for (std::size_t i = 0; i < things.size() && i < kMost; ++i) {
      if (i > 0) out << ", ";
      if (contents_.Is(things[i], language::SECTION_SENSOR)) {
        WriteLink(contents_, things[i], out);
      } else {
        WriteFullLink(contents_, things[i], out);
      }
    }
    if (things.size() >= Contents::kMostUsers) {
      out << " and many more";
    } else if (things.size() > kMost) {
      out << " and " << things.size() - kMost << " more";
    }
  }

  const Contents& contents_;
  const std::set<Thing> writers_;
  Html effects_;  // rows
  Html others_;
  std::size_t count_ = 0;  // of the others
};

}  // namespace

void WriteActions(const Contents& contents, Html& out) { ActionTables(contents).Write(out); }

}  // namespace rux::page
