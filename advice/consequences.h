// Findings that follow from others: one slip is one error.
#ifndef ADVICE_CONSEQUENCES_H_
#define ADVICE_CONSEQUENCES_H_

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "advice/places.h"
#include "diagnostics/diagnostic.h"
#include "run/log.h"
#include "run/run.h"
#include "sources/source_set.h"

namespace rux::advice {

// What follows from what in a run. A cause is an error, so that a script with consequences has one.
class Consequences {
 public:
  explicit Consequences(const run::Result& result);

  // Whether the finding follows from another one, which is reported.
  bool Includes(const run::Finding& finding) const { return folded_.count(&finding) != 0; }

  // Adds to the diagnostic of a cause what explains its consequences.
  void AddNotes(const run::Finding& cause, Places& places,
                diagnostics::Diagnostic& diagnostic) const;

 private:
  struct Note {
    std::string text;
    const run::Finding* at;  // null: the cause
  };

  // A header that is missing makes the entries of two sections those of one.
  void FoldMissingHeaders();
  void FoldMissingHeader(const std::vector<const run::Finding*>& of_section);
  void FoldReferencesTo(const ruxcomp::reader::Section& section,
                        const ruxcomp::reader::Item& first_swallowed);
  // A parent that does not exist is not defined further up either.
  void FoldUnknownParents();
  // The first of two sections is where it should be.
  void FoldFirstSections();
  // A key that is misspelt is missing under its right name.
  void FoldMisspeltKeys();
  // The value that goes on in a line of its own lacks the parts there.
  void FoldCutValues();
  // IDs without commas between them name no sensor, and leave sensors unlisted.
  void FoldListsWithoutCommas();
  // An ID that is used twice is missing where it was to be.
  void FoldRepeatedIds();
  // An ID that is mistyped in a list leaves a sensor unlisted.
  void FoldMistypedIds();

  void Fold(const run::Finding& consequence) { folded_.insert(&consequence); }
  void Fold(const run::Finding& consequence, const run::Finding& cause, std::string text);
  std::vector<const run::Finding*> Of(const ruxcomp::findings::MessageRow& row) const;

  const run::Result& result_;
  std::set<const run::Finding*> folded_;
  std::map<const run::Finding*, std::vector<Note>> notes_;
};

}  // namespace rux::advice

#endif  // ADVICE_CONSEQUENCES_H_
