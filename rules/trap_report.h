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

namespace rux {

inline SourcePlace PlaceOf(const ScriptItem& item) { return {item.file, item.item->line}; }

class TrapReport {
 public:
  // A warning about an item, with the part of it that is meant; without one, the key is.
  Diagnostic& Add(MessageId id, const ScriptItem& item, std::string_view text,
                  std::string_view meant = {});
  // About a section as a whole.
  Diagnostic& Add(MessageId id, const SourceSection& section, std::string_view text);
  // About the script as a whole.
  Diagnostic& Add(MessageId id, std::string_view text);

  std::vector<Diagnostic> TakeFound() { return std::move(found_); }

 private:
  std::vector<Diagnostic> found_;
};

// Where the value of an item has a part of it.
std::optional<std::size_t> ValueAt(const reader::Item& item, std::string_view part);

// Adds a note on another place, and on what is meant in the value there; it is located with the
// diagnostic.
void AddPlace(Diagnostic& diagnostic, std::string text, const SourcePlace& place,
              std::optional<std::size_t> value_at = std::nullopt);

}  // namespace rux

#endif  // RULES_TRAP_REPORT_H_
