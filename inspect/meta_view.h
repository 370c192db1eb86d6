// A meta file for reading: the read model, in the words of a script's author.
#ifndef INSPECT_META_VIEW_H_
#define INSPECT_META_VIEW_H_

#include <cstdint>
#include <string>

#include "compiled/datum.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"

namespace rux::inspect {

class MetaView {
 public:
  // Throws a Failure when the file cannot be read or is not a sound meta file.
  explicit MetaView(const std::string& path);

  const std::string& path() const { return path_; }
  const tagMETAFILEINFO& info() const { return info_; }

  // Of a kind that meta files can hold, in file order.
  ruxcomp::Sections SectionsOf(const ruxcomp::language::SectionKind& kind) const {
    return model_.sections(kind.compiled);
  }

  const ruxcomp::Model& model() const { return model_; }

 private:
  const std::string path_;
  tagMETAFILEINFO info_{};
  ruxcomp::Model model_;
};

// What a value stands for, with names as a script writes them.
compiled::Datum DatumOf(const ruxcomp::Value& value);

// The key of an entry as a script writes it in such a section.
std::string KeyOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry);

}  // namespace rux::inspect

#endif  // INSPECT_META_VIEW_H_
