#include "page/actions.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <vector>

#include "browse/relations.h"
#include "machine/value.h"
#include "page/contents.h"
#include "page/effects.h"
#include "page/html.h"
#include "page/value_flow.h"
#include "support/number_text.h"

namespace rux::page {
namespace {

class ActionTables {
 public:
  ActionTables(const Contents& contents, const Effects& effects) : contents_(contents) {
    const Contents::Range actions = contents.Of(language::SECTION_ACTION);
    for (Thing action = actions.begin; action < actions.end; ++action) {
      const Effect* effect = effects.Of(action);
      if (effect != nullptr) {
        AddEffect(*effect);
      } else {
        AddOther(action);
      }
    }
    AddWrites(effects.writes());
  }

  void Write(Html& out) const {
    if (!effects_.is_empty()) {
      WriteTable("what the machine does",
                 "What the machine does: actions that write to a bus, and what makes them run; "
                 "then what writes without an action",
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
  static constexpr std::size_t kMost = 12;      // that run an action, of those shown
  static constexpr std::size_t kMostOpen = 30;  // actions of a table that begins open

  static void WriteTable(const char* label, const char* caption,
                         const std::vector<const char*>& columns, const Html& rows, Html& out) {
    out << "<div class=scroll role=region tabindex=0 aria-label=\"" << Text{label}
        << "\"><table class=wide><caption>" << Text{caption} << "</caption><thead><tr>";
    for (const char* column : columns) out << "<th scope=col>" << Text{column};
    out << "<tbody>\n" << rows << "</table></div>";
  }

  // A row for each that runs the action.
  void AddEffect(const Effect& effect) {
    const std::size_t shown = std::min(effect.runs.size(), kMost);
    const std::size_t more = effect.runs.size() - shown;
    effects_ << "<tr><th scope=row rowspan=" << shown + (more > 0 ? 1 : 0) << ">";
    WriteLink(contents_, effect.action, effects_);
    for (std::size_t i = 0; i < shown; ++i) {
      if (i > 0) effects_ << "<tr>";
      effects_ << "<td>";
      WriteCaller(contents_, effect.runs[i], effects_);
      effects_ << "<td>";
      WriteDeciders(contents_, effect, effect.runs[i], effects_);
      effects_ << "\n";
    }
    if (more > 0) effects_ << "<tr><td>and " << more << " more<td>\n";
  }

  void AddWrites(const std::vector<Effects::Write>& writes) {
    for (std::size_t i = 0; i < writes.size() && i < kMost; ++i) {
      effects_ << "<tr><th scope=row>";
      WriteFullLink(contents_, writes[i].thing, effects_);
      effects_ << "<td>"
               << Text{machine::KeyOf(contents_.SectionOf(writes[i].thing), writes[i].entry)}
               << " <code>";
      WritePieces(PiecesOf(contents_, writes[i].entry), effects_);
      effects_ << "</code><td>\n";
    }
    if (writes.size() > kMost)
      effects_ << "<tr><th scope=row>and " << writes.size() - kMost << " more<td><td>\n";
  }

  void AddOther(Thing action) {
    ++count_;
    others_ << "<tr><th scope=row>";
    WriteLink(contents_, action, others_);
    others_ << "<td>";
    WriteCallers(action, others_);
    others_ << "\n";
  }

  void WriteCallers(Thing action, Html& out) const {
    std::set<Thing> callers;
    for (const browse::Link* link : contents_.relations().To(action)) callers.insert(link->from);
    std::vector<Thing> origins;
    for (const Thing user : contents_.UsersOf(action)) {
      const bool is_new = callers.find(user) == callers.end();
      if (is_new && !contents_.Is(user, language::SECTION_ACTION)) origins.push_back(user);
    }
    WriteSomeLinks(contents_, {callers.begin(), callers.end()}, out);
    if (callers.empty()) out << "nothing in this machine";
    out << "<td>";
    WriteSomeLinks(contents_, origins, out);
  }

  const Contents& contents_;
  Html effects_;  // rows
  Html others_;
  std::size_t count_ = 0;  // of the others
};

}  // namespace

void WriteActions(const Contents& contents, const Effects& effects, Html& out) {
  ActionTables(contents, effects).Write(out);
}

}  // namespace rux::page
