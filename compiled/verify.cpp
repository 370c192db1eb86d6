#include "compiled/verify.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/debug_rules.h"
#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/debug_meta_walk.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/meta_walk.h"
#include "ruxcomp/verify/meta_rules.h"

namespace rux::compiled {
namespace {

// The rules, and how much there is in the file.
class CountingRules : public ruxcomp::verify::MetaRules {
 public:
  void OnSectionBegin(Cursor& cursor, const MetaSectionView& section) {
    ++sections_;
    MetaRules::OnSectionBegin(cursor, section);
  }
  void OnEntry(Cursor& cursor, const MetaEntryView& entry) {
    ++entries_;
    values_ += entry.value_count();
    MetaRules::OnEntry(cursor, entry);
  }

  std::vector<Summary::Count> Counts() const {
    return {{"sections", sections_},
            {"entries", entries_},
            {"values", values_},
            {"numbers", tables().NumberCount()},
            {"texts", tables().TextCount()}};
  }

 private:
  std::size_t sections_ = 0;
  std::size_t entries_ = 0;
  std::size_t values_ = 0;
};

void VerifyMeta(std::string_view bytes, Faults& faults, Summary& summary) {
  CountingRules rules;
  const MetaFrame frame = WalkMeta(bytes, faults, rules);
  summary.version = frame.header.version;
  summary.creation_time = frame.header.creation_time;
  summary.counts = rules.Counts();
  const std::string& note = rules.tables().note();
  if (!note.empty()) summary.notes.push_back("table 0, length: " + note);
}

void VerifyDebugMeta(std::string_view bytes, Faults& faults, Summary& summary) {
  DebugRules rules;
  const FileHeader header = WalkDebugMeta(bytes, faults, rules);
  summary.version = header.version;
  summary.creation_time = header.creation_time;
  summary.counts = {{"sections", rules.sections()},
                    {"entries", rules.entries()},
                    {"words", rules.words()},
                    {"files", rules.files().value_or(0)}};
  if (rules.sections() > 0 && !rules.files()) {
    summary.notes.emplace_back(
        "it does not list its source files: gdInit loads it only after another debug meta file");
  } else if (rules.hides_files()) {
    summary.notes.emplace_back(
        "it begins with an INCLUDE section: gdInit loads it only after another debug meta file");
  }
}

}  // namespace

Fault NoForm() { return {0, "header", "magic", "it is neither a meta file nor a debug meta file"}; }

Faults Verify(std::string_view bytes, Summary* summary) {
  Faults faults;
  Summary found;
  found.form = FormOf(bytes);
  switch (found.form) {
    case Form::kNone:
      faults.Add(NoForm());
      break;
    case Form::kMeta:
      VerifyMeta(bytes, faults, found);
      break;
    case Form::kDebugMeta:
      VerifyDebugMeta(bytes, faults, found);
      break;
  }
  if (summary != nullptr) *summary = std::move(found);
  return faults;
}

}  // namespace rux::compiled
