// What the rules on traps have found.
#ifndef RULES_TRAP_REPORT_H_
#define RULES_TRAP_REPORT_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "rules/rows.h"
#include "rules/script_item.h"

namespace rux::rules {

inline sources::SourcePlace PlaceOf(const ScriptItem& item) { return {item.file, item.item->line}; }

class TrapReport {
 public:
  // A warning about an item, with the part of it that is meant, as a view of the item; without one,
  // the key is.
  diagnostics::Diagnostic& Add(const findings::MessageRow& row, const ScriptItem& item,
                               std::string_view text, std::string_view meant = {});
  // About a section as a whole.
  diagnostics::Diagnostic& Add(const findings::MessageRow& row,
                               const sources::SourceSection& section, std::string_view text);
  // About the script as a whole.
  diagnostics::Diagnostic& Add(const findings::MessageRow& row, std::string_view text);

  std::vector<diagnostics::Diagnostic> TakeFound() { return std::move(found_); }

 private:
  std::vector<diagnostics::Diagnostic> found_;
};

// Adds a note on another place: on what is meant there, a view of the file or, without one, on what
// begins on the line.
void AddPlace(diagnostics::Diagnostic& diagnostic, std::string text,
              const sources::SourcePlace& place, std::string_view meant = {});

}  // namespace rux::rules

#endif  // RULES_TRAP_REPORT_H_
