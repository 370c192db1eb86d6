// What an import wrote, what became of it since, and what another import would write: one text.
#ifndef IMPORTS_MERGE_H_
#define IMPORTS_MERGE_H_

#include <cstdint>
#include <string>
#include <vector>

namespace rux::imports {

// A place that was edited, and that the import would write otherwise than before. The edit stays.
struct Conflict {
  std::uint32_t line;   // of the merged text, from 1
  std::string section;  // the header and the NAME, "[SENSOR] CPU"; empty: before the first one
  std::string edited;   // the line there; empty: it was taken out
  std::string written;  // the line of the import; empty: it would be taken out
};

struct Merged {
  std::string text;
  std::vector<Conflict> conflicts;
};

// Sections are the same by kind and NAME, lines in them by key, comments by their text; the order
// is the edited one. Changes of the import are taken over where nothing was edited; the numbers of
// a SENSORS list one by one. The limits of a sensor are brought to one scale before that; where
// they cannot be, those that were edited stay. Blanks make no difference.
Merged Merge(const std::string& base, const std::string& edited, const std::string& written);

}  // namespace rux::imports

#endif  // IMPORTS_MERGE_H_
