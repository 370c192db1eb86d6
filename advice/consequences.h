// Findings that follow from others: one slip is one error.
#ifndef ADVICE_CONSEQUENCES_H_
#define ADVICE_CONSEQUENCES_H_

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "advice/lost_items.h"
#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "run/log.h"
#include "run/run.h"

namespace rux::advice {

// What follows from what in a run. A finding with errors as consequences is an error, whatever it
// is by itself, so that a script with errors has one.
class Consequences {
 public:
  // `collection`: what becomes of messages.
  Consequences(const run::Result& result, const diagnostics::Collection& collection);

  // Whether the finding follows from another one, which is reported.
  bool Includes(const run::Finding& finding) const { return folded_.count(&finding) != 0; }
  void RemoveFrom(std::vector<diagnostics::Diagnostic>& warnings_of_rules) const;
  // Whether all findings with the message follow, and so do those that were not kept.
  bool IncludesRest(const diagnostics::MessageRow& row) const {
    return folded_rest_.count(&row) != 0;
  }

  diagnostics::Severity SeverityOf(const run::Finding& finding) const;
  // The same without regard to consequences.
  diagnostics::Severity SeverityOf(const diagnostics::MessageRow& row) const;

  // Adds to the diagnostic of a cause what explains its consequences.
  void AddNotes(const run::Finding& cause, diagnostics::Diagnostic& diagnostic) const;

 private:
  bool Includes(const diagnostics::Diagnostic& warning_of_rules) const;

  struct Cause {
    std::vector<diagnostics::Note> notes;
    std::vector<const run::Finding*> consequences;
    std::size_t far = 0;  // of the consequences, errors in other sections that no note is about
    bool is_one_of_several = false;  // which of them it is cannot be known
  };

  // What is missing because the library does not see it as what it is, or did not read it.
  void PlanLost();
  void PlanMissing();
  // Whatever is missing may be in a file that was not read. Those are all; the first is reported as
  // the cause.
  std::vector<const run::Finding*> FindUnreadFiles() const;
  // A name that is misspelt where it is given is missing wherever it is referred to.
  void PlanMisspeltNames();
  void PlanMisspeltName(const std::vector<const run::Finding*>& findings,
                        const std::unordered_set<std::string_view>& used);

  // What follows from a slip nearby.
  void PlanLocal();
  // A parent that does not exist is not defined further up either.
  void PlanUnknownParents();
  // The first of two sections is where it should be.
  void PlanFirstSections();
  // A key that is misspelt is missing under its right name.
  void PlanMisspeltKeys();
  // The value that goes on in a line of its own lacks the parts there.
  void PlanCutValues();
  // A quote that is not closed hides the commas of the value.
  void PlanUnclosedQuotes();
  // IDs without commas between them name no sensor, and leave sensors unlisted.
  void PlanListsWithoutCommas();
  // So do the names of sensors.
  void PlanListsOfNames();
  // An ID that is used twice is missing where it was to be.
  void PlanRepeatedIds();
  // An ID that is mistyped in a list leaves a sensor unlisted.
  void PlanMistypedIds();

  // Folds nothing yet: a warning may turn out to have no errors as consequences.
  void Plan(const run::Finding& consequence, const run::Finding& cause);
  void Plan(const run::Finding& consequence, const run::Finding& cause, std::string text);
  void Fold();
  void FoldRests();
  bool IsError(const run::Finding& finding) const;
  // Whether it is one, or one follows from it.
  bool HasError(const run::Finding& cause) const;
  // Those with the message that are not planned for.
  std::vector<const run::Finding*> Of(const diagnostics::MessageRow& row) const;

  const run::Result& result_;
  const diagnostics::Collection& collection_;
  std::optional<LostItems> lost_;
  bool lacks_parent_ = false;  // the parent of the group does not exist
  std::map<const run::Finding*, Cause> causes_;
  std::map<const run::Finding*, const run::Finding*> cause_of_;
  std::set<const run::Finding*> folded_;
  std::set<const diagnostics::MessageRow*> folded_rest_;
  std::set<const run::Finding*> raised_;
};

}  // namespace rux::advice

#endif  // ADVICE_CONSEQUENCES_H_
