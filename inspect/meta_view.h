// A meta file for reading: the read model, in the words of a script's author, and what is at a
// path.
#ifndef INSPECT_META_VIEW_H_
#define INSPECT_META_VIEW_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "inspect/path.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"

namespace rux::inspect {

class MetaView {
 public:
  // Throws a Failure when the file cannot be read or is not a sound meta file.
  explicit MetaView(const std::string& path);

  const std::string& path() const { return path_; }

  // Of a kind that meta files can hold, in file order.
  ruxcomp::Sections SectionsOf(const ruxcomp::language::SectionKind& kind) const {
    return model_.sections(kind.compiled);
  }

  const ruxcomp::Model& model() const { return model_; }

 private:
  const std::string path_;
  ruxcomp::file::KeptBytes bytes_;
  ruxcomp::Model model_;  // of these bytes
};

// What a value stands for, with names as a script writes them.
compiled::Datum DatumOf(const ruxcomp::Value& value);

// The key of an entry as a script writes it in such a section.
std::string KeyOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry);

// The kind of that keyword. Throws a Failure that names the kinds near it.
const ruxcomp::language::SectionKind& ExpectKind(const std::string& keyword);

// What a path leads to: a section, one of its entries, or a part of that entry.
struct Found {
  ruxcomp::Section section;
  ruxcomp::Entry entry = {};
  std::optional<EntryPart> part = {};
};

// KIND/SECTION[/ENTRY[/PART]]
//
//   SECTION  a name, #ID, or @ordinal. In kinds without names, a name is that of an entry and leads
//            to it in the first section that has it.
//   ENTRY    the key as a script writes it
//   PART     Type or the name of a part; @n is the n-th value of the entry, from 0
//
// Throws a Failure of findings that says what does not exist and which names are near it, and one
// of wrong usage for a path of another form.
Found Find(const MetaView& meta, const std::vector<PathStep>& path);

}  // namespace rux::inspect

#endif  // INSPECT_META_VIEW_H_
