// What the page of a machine has to say, put together from the rooms that know it.
#ifndef PAGE_CONTENTS_H_
#define PAGE_CONTENTS_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "diagnostics/report.h"
#include "diff/change.h"
#include "machine/machine.h"
#include "page/html.h"
#include "page/sources.h"
#include "page/test_run.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {

namespace language = ruxcomp::language;

// What is known of a machine beside what it is.
struct Background {
  std::string index;                           // a link to the page of all machines; or empty
  std::string title;                           // empty: what the machine calls itself
  std::string file;                            // its name, without a folder
  std::string folder;                          // of paths that are shown without it
  std::string form;                            // "script", "meta file", "debug meta file"
  std::optional<std::uint32_t> creation_time;  // of a compiled file
  Sources sources;
  std::optional<diagnostics::Report> report;         // of a script: what check and lint find
  std::optional<std::vector<diff::Change>> changes;  // since another machine
  std::string before;                                // what that one is called
  std::optional<TestRun> tests;                      // of the machine
  bool is_new = false;  // others are compared with what they were, this one is new
};

// A section of the machine, or an entry of a kind without NAMEs, by its number among all.
using Thing = std::size_t;

class Contents {
 public:
  // The machine must outlive it.
  Contents(const machine::Machine& machine, Background background);

  const machine::Machine& machine() const { return machine_; }
  const Background& background() const { return background_; }
  const browse::MachineRelations& relations() const { return relations_; }
  std::string Title() const;

  // Those of a kind follow each other.
  struct Range {
    Thing begin;
    Thing end;
    std::size_t size() const { return end - begin; }
  };
  Range Of(language::SectionId kind) const;

  const browse::Thing& At(Thing thing) const { return relations_.things()[thing]; }
  bool Is(Thing thing, language::SectionId kind) const { return At(thing).kind->source == kind; }
  ruxcomp::Section SectionOf(Thing thing) const;
  std::size_t OrdinalOf(Thing thing) const;
  // Its entries; the one that it is, for an entry of a kind without NAMEs.
  std::vector<ruxcomp::Entry> EntriesOf(Thing thing) const;
  // Those that say what to do, in the order of the script where it is known. Valid as long as this.
  const std::vector<ruxcomp::Entry>& ValuesOf(Thing thing) const;
  // What its script says; none when that is not known. Valid as long as this.
  const std::optional<Excerpt>& ExcerptOf(Thing thing) const;
  // The place as it is shown.
  std::string PlaceText(const machine::Place& place) const;
  std::string PathText(const std::string& path) const;

  // A limit, or the reading that is expected, with its unit; none of another entry.
  std::optional<std::string> AmountOf(Thing thing, const ruxcomp::Entry& entry) const;

  // What uses it, directly or not; each once, the nearest first, and at most kMostUsers.
  static constexpr std::size_t kMostUsers = 200;
  std::vector<Thing> UsersOf(Thing thing) const;

  const std::vector<const diagnostics::Diagnostic*>& FindingsOf(Thing thing) const {
    return findings_[thing];
  }
  const std::vector<const diff::Change*>& ChangesOf(Thing thing) const { return changes_[thing]; }
  // What a change is about; none when it is gone.
  std::optional<Thing> ThingOf(const diff::Change& change) const;
  std::optional<Thing> ThingOf(const diagnostics::Diagnostic& finding) const;

 private:
  void PlaceFindings();
  void PlaceChanges();

  const machine::Machine& machine_;
  const Background background_;
  const browse::MachineRelations relations_;
  std::vector<std::vector<const diagnostics::Diagnostic*>> findings_;  // by things
  std::vector<std::vector<const diff::Change*>> changes_;
  std::vector<std::pair<machine::Place, Thing>> places_;  // sorted
  // What was asked for.
  mutable std::map<Thing, std::optional<Excerpt>> excerpts_;
  mutable std::map<Thing, std::vector<ruxcomp::Entry>> values_;
};

// Whether an entry says what to do rather than what something is.
bool IsValue(const ruxcomp::Entry& entry);

// What it is called where its kind is known: its name, its key, or its ID.
std::string NameOf(const browse::Thing& thing);

// A link with that name.
void WriteLink(const Contents& contents, Thing thing, Html& out);
// The same with the kind in front.
void WriteFullLink(const Contents& contents, Thing thing, Html& out);

}  // namespace rux::page

#endif  // PAGE_CONTENTS_H_
