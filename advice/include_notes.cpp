// Why files that a script includes are missing.
#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "advice/advice.h"
#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/origin.h"
#include "reader/archive.h"
#include "run/run.h"
#include "sources/script_path.h"
#include "sources/source_set.h"

namespace rux::advice {
namespace {

using diagnostics::Diagnostic;

// The scripts that were refused, by the item that includes them.
class RefusedByItem {
 public:
  explicit RefusedByItem(const sources::SourceSet& sources) {
    for (const reader::RefusedScript& refused : sources.refused()) {
      const reader::Includer& by = refused.includer;
      if (by) items_.emplace(Key{by->script, by->place.section, by->place.item}, &refused);
    }
  }

  const reader::RefusedScript* Find(const Diagnostic& warning) const {
    const findings::Origin& at = warning.origin;
    const auto found = items_.find(Key{at.script, at.section, at.item});
    return found == items_.end() ? nullptr : found->second;
  }

 private:
  using Key = std::tuple<std::size_t, std::size_t, std::size_t>;  // opening, section, item
  std::map<Key, const reader::RefusedScript*> items_;
};

std::string TextOf(const reader::RefusedScript& refused) {
  const std::string path = sources::ToOpenablePath(refused.path);
  if (refused.reason == reader::Refusal::kIsOpenAlready) {
    return path + " is open already: the INCLUDEs form a loop";
  }
  return "cannot read " + path + ": " + sources::ReasonOf(refused);
}

}  // namespace

void AddNotesOnIncludes(const run::Result& result, diagnostics::Collection& collection) {
  const findings::MessageRow& row = findings::rows::kMissingInclude;
  const RefusedByItem refused_by_item(result.sources);
  for (Diagnostic& diagnostic : collection.kept()) {
    if (diagnostic.row != &row) continue;
    const reader::RefusedScript* refused = refused_by_item.Find(diagnostic);
    if (refused != nullptr) diagnostic.notes.push_back({TextOf(*refused), {}});
  }
  const std::size_t missing = collection.CountOf(row);
  if (missing == 0 || collection.errors() == 0) return;
  Diagnostic note;
  note.row = &kUnreadIncludes;
  note.severity = diagnostics::Severity::kNote;
  note.text = missing == 1 ? "1 INCLUDE could not be read; errors above may follow from it"
                           : std::to_string(missing) +
                                 " INCLUDEs could not be read; errors above may follow from them";
  collection.AddConclusion(std::move(note));
}

}  // namespace rux::advice
