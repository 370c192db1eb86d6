// The differences between two machines in the forms in which they are reported.
#ifndef DIFF_REPORT_H_
#define DIFF_REPORT_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "machine/place.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::diff {

struct ComparedMachine {
  std::string name;  // as the user called it
  machine::Place file;
};

struct Report {
  ComparedMachine before;
  ComparedMachine after;
  std::vector<Change> changes;
  std::size_t in_baseline = 0;         // that are left out
  std::vector<const ClassRow*> fails;  // the classes that the user does not accept

  bool Fails(const Change& change) const;
  std::size_t CountOf(Category category) const;
};

// "boards/old.meta -> boards/new.meta: 3 changes: 1 id, 2 limits (1 in the baseline)"
std::string SummaryText(const Report& report);

// The summary, then section by section; with places in the scripts where they are known.
void WriteText(const Report& report, bool uses_colour, support::TextStream& out);

// What that writes after the summary.
void WriteChanges(const std::vector<Change>& changes, bool uses_colour, support::TextStream& out);

// The summary, then how many changes there are of each class.
void WriteStatistics(const Report& report, support::TextStream& out);

// docs/diff.schema.json
void WriteJson(const Report& report, support::TextStream& out);

// The members of a change there, but for "fails".
void WriteChange(const Change& change, support::JsonObject& json);

// For the text of a review: a table of the limits before and after, then one of all else.
void WriteMarkdown(const Report& report, support::TextStream& out);

// A page that needs no other file.
void WriteHtml(const Report& report, support::TextStream& out);

// The forms of diagnostics: a note for each change, an error for one that fails. Where a machine is
// of a git revision, files are called by their paths from the top of the repository.
void WriteGithub(const Report& report, support::TextStream& out);
void WriteSarif(const Report& report, support::TextStream& out);

// The forms by name, "text" being the first.
struct Form {
  std::string_view name;
  void (*write)(const Report& report, support::TextStream& out);
};
inline constexpr Form kForms[] = {
    {"text", nullptr},       {"json", WriteJson},   {"markdown", WriteMarkdown},
    {"github", WriteGithub}, {"sarif", WriteSarif}, {"html", WriteHtml},
};

}  // namespace rux::diff

#endif  // DIFF_REPORT_H_
