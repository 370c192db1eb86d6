#include "compiled/verify.h"

#include <string>
#include <string_view>
#include <utility>

#include "compiled/debug_rules.h"
#include "ruxcomp/file/debug_meta_walk.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/meta_walk.h"
#include "ruxcomp/verify/meta_rules.h"

namespace rux::compiled {
namespace {

void VerifyMeta(std::string_view bytes, Faults& faults, Summary& summary) {
  ruxcomp::verify::MetaRules rules;
  const MetaFrame frame = WalkMeta(bytes, faults, rules);
  summary.version = frame.header.version;
  summary.creation_time = frame.header.creation_time;
  summary.counts = {{"sections", rules.sections()},
                    {"entries", rules.entries()},
                    {"values", rules.values()},
                    {"numbers", rules.tables().NumberCount()},
                    {"texts", rules.tables().TextCount()}};
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

Faults Verify(std::string_view bytes, Summary* summary) {
  Faults faults;
  Summary found;
  found.form = FormOf(bytes);
  switch (found.form) {
    case Form::kNone:
      faults.Add({0, "header", "magic", "it is neither a meta file nor a debug meta file"});
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
