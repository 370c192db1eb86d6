#include "inspect/section_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "inspect/dump.h"
#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "inspect/grid.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/pattern.h"
#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/wrap.h"

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;

// What a long list shows of a kind.
struct LongKey {
  language::SectionId section;
  language::EntryId entry;
};
constexpr LongKey kLongKeys[] = {
    {language::SECTION_MORVRUX, language::ENTRY_VERSION},
    {language::SECTION_SYSTEM, language::ENTRY_TYPE},
    {language::SECTION_SYSTEM, language::ENTRY_MODEL},
    {language::SECTION_GROUP, language::ENTRY_PARENT},
    {language::SECTION_SENSOR, language::ENTRY_TYPE},
    {language::SECTION_SENSOR, language::ENTRY_THRESHOLD_FL},
    {language::SECTION_SENSOR, language::ENTRY_THRESHOLD_WL},
    {language::SECTION_SENSOR, language::ENTRY_THRESHOLD_WH},
    {language::SECTION_SENSOR, language::ENTRY_THRESHOLD_FH},
    {language::SECTION_DEVICE, language::ENTRY_INITFLAG},
    {language::SECTION_ACTION, language::ENTRY_ARGNUMBER},
    {language::SECTION_TABLE, language::ENTRY_TYPE},
    {language::SECTION_PELMGROUP, language::ENTRY_PID},
};

bool NameFits(const FileView& view, const SectionKind& kind, std::size_t ordinal,
              const std::string& pattern) {
  if (pattern.empty()) return true;
  if (kind.HasNames()) {
    const std::optional<std::string> name = view.LabelOf(kind, ordinal).name;
    return name && support::FitsPattern(pattern, *name);
  }
  const std::vector<std::string> keys = view.KeysOf(kind, ordinal);
  return std::any_of(keys.begin(), keys.end(),
                     [&](const std::string& key) { return support::FitsPattern(pattern, key); });
}

bool FileFits(const FileView& view, const SectionKind& kind, std::size_t ordinal,
              const std::string& pattern) {
  if (pattern.empty()) return true;
  const std::string file = view.SourceFileOf(kind, ordinal);
  return support::FitsPattern(pattern, file) ||
         support::FitsPattern(pattern, file.substr(file.rfind('/') + 1));
}

// The entries of a section that a long list shows, in the order of the columns; those that it does
// not have are empty.
std::vector<KeyedValue> LongEntries(const FileView& view, const SectionKind& kind,
                                    std::size_t ordinal) {
  if (kind.naming == language::Naming::kByKeys || !kind.IsCompiled())
    return view.EntriesOf(kind, ordinal);
  std::vector<KeyedValue> entries;
  for (const LongKey& row : kLongKeys) {
    if (row.section != kind.source) continue;
    const std::string key(language::KeywordOf(row.entry));
    const std::optional<EntryValue> value = view.EntryOf(kind, ordinal, key);
    entries.push_back({key, value ? *value : EntryValue()});
  }
  return entries;
}

bool IsMissing(const KeyedValue& entry) { return entry.value.parts.empty() && !entry.value.type; }

Cell CellOf(const KeyedValue& entry) {
  return IsMissing(entry) ? Cell() : BriefPieces(entry.key, entry.value);
}

Row NamedRow(const FileView& view, const SectionKind& kind, std::size_t ordinal, bool is_long) {
  const SectionLabel label = view.LabelOf(kind, ordinal);
  Row row = {{fmt::format("@{}", ordinal)},
             label.id ? Cell{support::IdText(*label.id)} : Cell(),
             label.name ? Cell{support::NameText(*label.name)} : Cell()};
  if (!is_long) return row;
  for (const KeyedValue& entry : LongEntries(view, kind, ordinal)) row.push_back(CellOf(entry));
  return row;
}

Row KeysRow(const FileView& view, const SectionKind& kind, std::size_t ordinal) {
  Cell keys;
  for (const std::string& key : view.KeysOf(kind, ordinal))
    support::AddToList(keys, support::NameText(key));
  return {{fmt::format("@{}", ordinal)}, keys};
}

// Appends what distinguishes a section from the others of its kind, in a long list with the entries
// that matter most. Where keys are what sections are found by, each entry has a row.
void AddRows(const FileView& view, const SectionKind& kind, std::size_t ordinal, bool is_long,
             std::vector<Row>& rows) {
  if (kind.HasNames()) {
    rows.push_back(NamedRow(view, kind, ordinal, is_long));
  } else if (!is_long) {
    rows.push_back(KeysRow(view, kind, ordinal));
  } else {
    for (const KeyedValue& entry : LongEntries(view, kind, ordinal))
      rows.push_back({{fmt::format("@{}", ordinal)}, CellOf(entry)});
  }
}

}  // namespace

void WriteLabel(support::JsonObject& json, const SectionLabel& label) {
  json.Member("ordinal", label.ordinal);
  if (label.name) WriteText(json, "name", *label.name);
  if (label.id) json.Member("id", *label.id);
}

std::vector<std::size_t> SectionsThatFit(const FileView& view, const SectionKind& kind,
                                         const SectionFilter& filter) {
  if (!filter.file.empty() && view.form() != compiled::Form::kDebugMeta) {
    throw support::Failure(
        support::ExitStatus::kWrongUsage,
        "--file needs a debug meta file: {} does not have the names of source files", view.path());
  }
  std::vector<std::size_t> ordinals;
  for (std::size_t i = 0; i < view.CountOf(kind); ++i) {
    if (NameFits(view, kind, i, filter.name) && FileFits(view, kind, i, filter.file))
      ordinals.push_back(i);
  }
  return ordinals;
}

Selection::Selection(const FileView& view, const std::string& kind, const SectionFilter& filter)
    : is_all_(kind.empty() && filter.is_empty()) {
  if (is_all_) return;
  const SectionKind* only = kind.empty() ? nullptr : &view.ExpectKind(kind);
  for (const SectionKind& each : language::kSectionKinds) {
    if (only != nullptr && only != &each) continue;
    for (const std::size_t ordinal : SectionsThatFit(view, each, filter))
      sections_.emplace(each.source, ordinal);
  }
}

std::string KindsText(const FileView& view, std::size_t width) {
  std::vector<std::string> title = FormatPieces(view.version(), view.creation_time());
  title.insert(title.begin(), support::SafePath(view.path()) + ":");
  constexpr std::size_t kIndent = 6;
  std::string text = support::WrappedLine(title, width, kIndent) + '\n';
  for (const SectionKind& kind : language::kSectionKinds) {
    const std::size_t count = view.CountOf(kind);
    if (count > 0) text += fmt::format("{:<10}{}\n", kind.keyword, count);
  }
  return text;
}

void WriteKinds(support::JsonObject& json, const FileView& view) {
  WriteText(json, "file", view.path());
  json.Member("version", view.version());
  json.Member("created", view.creation_time());
  std::vector<const SectionKind*> kinds;
  for (const SectionKind& kind : language::kSectionKinds) {
    if (view.CountOf(kind) > 0) kinds.push_back(&kind);
  }
  json.Objects("kinds", kinds, [&](support::JsonObject& object, const SectionKind* kind) {
    object.Member("kind", kind->keyword);
    object.Member("sections", view.CountOf(*kind));
  });
}

std::string SectionsText(const FileView& view, const SectionKind& kind,
                         const std::vector<std::size_t>& ordinals, bool is_long,
                         support::OutputStyle style) {
  std::vector<Row> rows;
  for (const std::size_t ordinal : ordinals) AddRows(view, kind, ordinal, is_long, rows);
  const std::size_t labels = kind.HasNames() ? 3 : 1;  // ordinal, ID, name; or the ordinal
  const Grid grid(rows, labels, style);
  return is_long || !kind.HasNames() ? grid.Text() : grid.TextInColumns();
}

void WriteSections(support::JsonObject& json, const FileView& view, const SectionKind& kind,
                   const std::vector<std::size_t>& ordinals, bool is_long) {
  json.Member("kind", kind.keyword);
  json.Objects("sections", ordinals, [&](support::JsonObject& object, std::size_t ordinal) {
    if (kind.HasNames()) {
      WriteLabel(object, view.LabelOf(kind, ordinal));
    } else {
      object.Member("ordinal", ordinal);
    }
    const std::string file = view.SourceFileOf(kind, ordinal);
    if (!file.empty()) WriteText(object, "file", file);
    if (is_long) {
      std::vector<KeyedValue> entries = LongEntries(view, kind, ordinal);
      entries.erase(std::remove_if(entries.begin(), entries.end(), IsMissing), entries.end());
      object.Objects("entries", entries, [](support::JsonObject& each, const KeyedValue& entry) {
        WriteEntry(each, entry.key, entry.value);
      });
    } else if (!kind.HasNames()) {
      object.Objects(
          "entries", view.KeysOf(kind, ordinal),
          [](support::JsonObject& each, const std::string& key) { WriteText(each, "name", key); });
    }
  });
}

}  // namespace rux::inspect
