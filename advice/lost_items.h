// Items that the library does not see as what they are, because of one slip above them.
#ifndef ADVICE_LOST_ITEMS_H_
#define ADVICE_LOST_ITEMS_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "advice/missing.h"
#include "advice/missing_header.h"
#include "diagnostics/diagnostic.h"
#include "findings/origin.h"
#include "reader/script.h"
#include "run/log.h"
#include "run/run.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"

namespace rux::advice {

struct Lost {
  const run::Finding* cause;                   // null: nothing is found about them
  const ruxcomp::language::SectionKind* kind;  // null: not known
  Items items;
  std::vector<diagnostics::Note> hints;  // for the cause

  // The section that has them as well as its own; null: they are not in any.
  const sources::SourceFile* file = nullptr;
  const ruxcomp::reader::Section* section = nullptr;
  std::vector<const run::Finding*> misplaced = {};  // what is found about them there
};

class LostItems {
 public:
  explicit LostItems(const run::Result& result);

  const std::deque<Lost>& all() const { return all_; }
  // Those that have what is missing; null when none have.
  Lost* Find(const Missing& missing);

 private:
  using SectionPlace = std::pair<std::uint32_t, std::uint32_t>;  // script and section of an origin

  void FindMisspeltHeaders();
  void FindMissingFirstHeaders();
  void FindMissingHeaders();
  void FindMissingHeader(const SectionPlace& place);
  // In sections where no key is out of place.
  void FindMissingHeadersInDefinitions();

  void Add(Lost lost);
  void AddText(ruxcomp::language::EntryId entry, std::string_view text, Lost& lost);
  Evidence evidence();

  const run::Result& result_;
  std::deque<ruxcomp::reader::Script> scanned_;  // what is above first sections
  std::deque<Lost> all_;
  std::map<std::pair<ruxcomp::language::EntryId, std::string>, std::vector<Lost*>> by_text_;
  bool misses_ = false;                      // anything
  std::unordered_set<std::string> missed_;   // keys
  std::unordered_set<std::string> actions_;  // by name
  std::map<SectionPlace, std::vector<const run::Finding*>> misplaced_;
};

}  // namespace rux::advice

#endif  // ADVICE_LOST_ITEMS_H_
