// What makes a machine what a list says: edits of its scripts.
#ifndef RECONCILE_ADOPT_H_
#define RECONCILE_ADOPT_H_

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "machine/machine.h"
#include "reconcile/compare.h"
#include "reconcile/listing.h"
#include "support/json.h"
#include "table/forms.h"

namespace rux::reconcile {

// What becomes of a difference.
struct Edit {
  const Difference* difference;
  std::string reason;  // why it is left as it is; empty: it is edited
  std::string value;   // which the script gets; empty: the entry is taken out
};

struct Adoption {
  const Comparison* comparison;
  std::vector<Edit> edits;                   // one for each difference
  std::map<std::string, std::string> texts;  // of the scripts that change, by their paths

  std::size_t CountOfMade() const;
};

// Reads the machine of a script.
using LoadMachine = std::function<machine::Machine(const std::string& name)>;

// The machine compared with the list as it will be measured: its TYPEs and properties, which the
// list may change, can decide what limits are numbers of. Both must outlive the comparison. Throws
// a Failure of findings when the machine does not compile with these.
Comparison CompareToAdopt(const machine::Machine& machine, const Listing& listing,
                          const LoadMachine& load);

// Numbers and texts of the machine's sections become those of the list, in the manner in which the
// script has them; what a list cannot say is left. Reads the scripts. The comparison must outlive
// the result.
Adoption PlanAdoption(const Comparison& comparison);

// Throws a Failure of findings when the machine of the script `name` with these texts does not
// compile, or when it then differs from the list in anything but what is left; or when another
// machine that has some of the scripts, and compiles now, would not compile with them.
void VerifyAdoption(const Adoption& adoption, const Listing& listing, const std::string& name,
                    const std::vector<std::string>& others, const LoadMachine& load);

// Puts the scripts in place of the files, all of them or none. Throws a Failure.
void WriteScripts(const Adoption& adoption);

// A row for each difference, with what is written and what is left.
table::Sheet SheetOf(const Adoption& adoption, const Listing& listing, const std::string& machine,
                     bool is_made);

// The object of docs/table-apply.schema.json; `sheet`: of the adoption.
void WriteAdoption(const Adoption& adoption, const Listing& listing, const std::string& machine,
                   bool is_made, const table::Sheet& sheet, support::JsonObject& json);

}  // namespace rux::reconcile

#endif  // RECONCILE_ADOPT_H_
