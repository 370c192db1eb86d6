// What there is in a compiled file: its kinds of sections, the sections of a kind, the tree of its
// groups.
#ifndef INSPECT_SECTION_LIST_H_
#define INSPECT_SECTION_LIST_H_

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "inspect/file_view.h"
#include "ruxcomp/language/sections.h"
#include "support/json.h"
#include "support/terminal.h"

namespace rux::inspect {

// Patterns as shells have them (*, ?, [...]); an empty one fits everything.
struct SectionFilter {
  std::string name;  // of the section, or a key where sections have no names
  std::string file;  // of the source file: its path or what follows the last slash

  bool is_empty() const { return name.empty() && file.empty(); }
};

// The sections that a command is about.
class Selection {
 public:
  Selection() = default;  // all
  // Those of a kind, or of all kinds when it is empty, that fit. Throws a Failure.
  Selection(const FileView& view, const std::string& kind, const SectionFilter& filter);

  bool is_all() const { return is_all_; }
  bool Has(ruxcomp::language::SectionId kind, std::size_t ordinal) const {
    return is_all_ || sections_.count({kind, ordinal}) > 0;
  }

 private:
  bool is_all_ = true;
  std::set<std::pair<ruxcomp::language::SectionId, std::size_t>> sections_;
};

// The ordinals of the sections of a kind that fit. Throws a Failure of wrong usage for a filter by
// files that the compiled file does not know.
std::vector<std::size_t> SectionsThatFit(const FileView& view, const SectionKind& kind,
                                         const SectionFilter& filter);

// The kinds with the numbers of their sections.
std::string KindsText(const FileView& view, std::size_t width);
void WriteKinds(support::JsonObject& json, const FileView& view);

// The sections of a kind; in a long list with the entries that matter most: types, limits, parents.
std::string SectionsText(const FileView& view, const SectionKind& kind,
                         const std::vector<std::size_t>& ordinals, bool is_long,
                         support::OutputStyle style);
void WriteSections(support::JsonObject& json, const FileView& view, const SectionKind& kind,
                   const std::vector<std::size_t>& ordinals, bool is_long);

// "ordinal", and "name" and "id" where the section has them.
void WriteLabel(support::JsonObject& json, const SectionLabel& label);

// The GROUPs with their SENSORs, and the PELMGROUPs with those that they list.
std::string TreeText(const FileView& view, support::OutputStyle style);
void WriteTree(support::JsonObject& json, const FileView& view);

}  // namespace rux::inspect

#endif  // INSPECT_SECTION_LIST_H_
