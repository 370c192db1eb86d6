#include "compiled/verify.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
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
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/sections.h"
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

namespace {

// Whether a line begins a section of some kind.
bool IsScript(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    for (const language::SectionKind& kind : language::kSectionKinds) {
      const std::string header = '[' + std::string(kind.keyword) + ']';
      if (line.substr(0, header.size()) == header) return true;
    }
    bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
  }
  return false;
}

bool IsBeginOfMagic(std::string_view bytes) {
  return bytes == MagicOf(Form::kMeta).substr(0, bytes.size()) ||
         bytes == MagicOf(Form::kDebugMeta).substr(0, bytes.size());
}

}  // namespace

std::string LikelyCause(std::string_view bytes, const Faults& faults) {
  if (bytes.empty()) return "the file is empty";
  if (FormOf(bytes) == Form::kNone) {
    if (IsBeginOfMagic(bytes)) return "the file appears truncated";
    return IsScript(bytes) ? "it is a script; 'rux compile' compiles it" : "";
  }
  const bool has_version = bytes.size() >= kVersionOffset + kWordSize;
  const std::uint32_t version = has_version ? LoadWord(&bytes[kVersionOffset]) : kVersion;
  if (version != kVersion) {
    return fmt::format(
        "it was compiled by another release: its format is 0x{:08X}, this release reads 0x{:08X}",
        version, kVersion);
  }
  return faults.is_cut() ? "the file appears truncated" : "";
}

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
