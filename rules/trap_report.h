// What the rules on traps have found.
#ifndef RULES_TRAP_REPORT_H_
#define RULES_TRAP_REPORT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "rules/script_item.h"

namespace rux::rules {

inline sources::SourcePlace PlaceOf(const ScriptItem& item) { return {item.file, item.item->line}; }

class TrapReport {
 public:
  // A warning about an item, with the part of it that is meant; without one, the key is.
  diagnostics::Diagnostic& Add(diagnostics::MessageId id, const ScriptItem& item,
                               std::string_view text, std::string_view meant = {});
  // About a section as a whole.
  diagnostics::Diagnostic& Add(diagnostics::MessageId id, const sources::SourceSection& section,
                               std::string_view text);
  // About the script as a whole.
  diagnostics::Diagnostic& Add(diagnostics::MessageId id, std::string_view text);

  std::vector<diagnostics::Diagnostic> TakeFound() { return std::move(found_); }

 private:
  std::vector<diagnostics::Diagnostic> found_;
};

// Where the value of an item has a part of it.
std::optional<std::size_t> ValueAt(const reader::Item& item, std::string_view part);

// Adds a note on another place, and on what is meant in the value there; it is located with the
// diagnostic.
void AddPlace(diagnostics::Diagnostic& diagnostic, std::string text,
              const sources::SourcePlace& place,
              std::optional<std::size_t> value_at = std::nullopt);

}  // namespace rux::rules

#endif  // RULES_TRAP_REPORT_H_
