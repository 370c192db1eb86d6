// A loaded meta file, for reading.
//
// Everything comes from the library's query functions and its exported tables; what this adds is a
// way back from table indices to names that does not walk a table each time, and the names that a
// script's author knows the entries by.
#ifndef TOOL_META_META_VIEW_H_
#define TOOL_META_META_VIEW_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ruxcomp/query.h"
#include "ruxcomp/records.h"
#include "tool/compiled/index_class.h"
#include "tool/meta/kinds.h"

namespace rux {

struct MetaSection {
  const Kind* kind;
  std::uint32_t ordinal;  // among those of the kind, from 0
  const tagGCSECT* record;
};

// One at a time: the library holds one meta file.
class MetaView {
 public:
  // Throws a Failure when the file cannot be read or is no sound meta file.
  explicit MetaView(const std::string& path);
  MetaView(const MetaView&) = delete;
  MetaView& operator=(const MetaView&) = delete;

  const std::string& path() const { return path_; }
  const tagMETAFILEINFO& info() const { return info_; }

  std::uint32_t CountOf(const Kind& kind) const;
  std::vector<MetaSection> SectionsOf(const Kind& kind) const;  // in file order

  // The section's NAME, and its ID; none when it has none that can be looked up.
  std::optional<std::string> NameOf(const MetaSection& section) const;
  std::optional<std::uint32_t> IdOf(const MetaSection& section) const;

  // The key of an entry as a script writes it in such a section.
  std::string KeyOf(const MetaSection& section, const tagGCENTRY& entry) const;

  // What a table index or an immediate code stands for. Like the library's own look-up, it cannot
  // tell the number 0xFFFFFFFF from a missing one.
  Datum Resolve(std::uint32_t index) const;

 private:
  // Also what the library read of a file that it then refused must be released.
  struct Loading {
    ~Loading() { gcUnInit(); }
  };

  // Turn a symbol table, key to index, round.
  void Invert(std::uint32_t base, const std::map<std::string, std::uint32_t>& table);
  void Invert(std::uint32_t base, const std::map<std::uint32_t, std::uint32_t>& table);
  std::optional<Datum> FirstValue(const MetaSection& section, std::uint32_t identifier) const;
  const std::string* StringOf(std::uint32_t index) const;

  const std::string path_;
  const Loading loading_{};
  tagMETAFILEINFO info_{};
  std::map<std::uint32_t, std::vector<const std::string*>> strings_;  // by class, then by ordinal
  std::vector<std::uint32_t> numbers_;                                // by ordinal
};

}  // namespace rux

#endif  // TOOL_META_META_VIEW_H_
