#include "advice/script_notes.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "advice/entry_text.h"
#include "advice/missing_header.h"
#include "diagnostics/diagnostic.h"
#include "reader/script.h"
#include "reader/value.h"
#include "rules/script_item.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
using diagnostics::Diagnostic;
using sources::SourceSection;

bool IsOf(const SourceSection& section, language::SectionId kind) {
  return section.section->name == language::KindOf(kind).keyword;
}

std::uint32_t NumberOf(std::string_view text) {
  return text.empty() ? 0 : language::ReadNumber(text).value;
}

// The IDs of the sensors with that parent.
std::set<std::uint32_t> IdsBelow(const sources::SourceSet& sources, std::string_view parent) {
  std::set<std::uint32_t> ids;
  for (const SourceSection& section : sources.sections()) {
    if (!IsOf(section, language::SECTION_SENSOR)) continue;
    if (TextOf(*section.section, language::ENTRY_PARENT) != parent) continue;
    ids.insert(NumberOf(TextOf(*section.section, language::ENTRY_ID)));
  }
  return ids;
}

struct List {
  const SourceSection* section = nullptr;
  const ruxcomp::reader::Item* item = nullptr;
};

// The list with most of these IDs, or else the only list there is.
List FindList(const sources::SourceSet& sources, const std::set<std::uint32_t>& ids) {
  List best;
  std::size_t most = 0;
  std::size_t lists = 0;
  for (const SourceSection& section : sources.sections()) {
    if (!IsOf(section, language::SECTION_PELMGROUP)) continue;
    const auto* item = FindItem(*section.section, language::ENTRY_SENSORS);
    if (item == nullptr) continue;
    if (++lists == 1) best = {&section, item};
    std::size_t count = 0;
    ruxcomp::reader::ForEachPart(
        *item, [&](std::string_view part) { count += ids.count(NumberOf(part)); });
    if (count > most) best = {&section, item};
    most = std::max(most, count);
  }
  return most > 0 || lists == 1 ? best : List{};
}

}  // namespace

void AddListToExtend(const sources::SourceSet& sources, Diagnostic& diagnostic) {
  const ruxcomp::reader::Section* sensor = sources.At(diagnostic.origin).section;
  if (sensor == nullptr || diagnostic.at.file == nullptr) return;
  const std::string_view parent = TextOf(*sensor, language::ENTRY_PARENT);
  const List list = FindList(sources, IdsBelow(sources, parent));
  if (list.item == nullptr) {
    diagnostic.notes.push_back({"add the ID to the SENSORS of a [PELMGROUP]", {}});
    return;
  }
  const std::string_view name = TextOf(*list.section->section, language::ENTRY_NAME);
  const sources::SourceFile& file = *list.section->file;
  diagnostic.notes.push_back(
      {fmt::format("add it here, to the SENSORS of {}, or to another [PELMGROUP]", name),
       diagnostics::LocationIn(file, file.RangeOf(list.item->key))});
}

void AddSwallowedSection(const sources::SourceSet& sources, Diagnostic& diagnostic) {
  const auto no = [](std::string_view) { return false; };
  for (const SourceSection& section : sources.sections()) {
    const auto header = FindMissingHeader(*section.section, {no, no});
    if (!header || diagnostic.text.find(header->kind->keyword) == std::string::npos) continue;
    const sources::SourceFile& file = *section.file;
    diagnostic.notes.push_back(
        {HintAbove(*header->kind, header->swallowed.first->line),
         diagnostics::LocationIn(file, file.RangeOf(header->swallowed.first->key))});
    return;
  }
}

void TypeNotes::AddNote(Diagnostic& diagnostic) {
  const std::string* word = FirstMentioned(diagnostic);
  if (word == nullptr || diagnostic.at.file == nullptr) return;
  if (!words_) words_.emplace(sources_, unread_);
  const auto code = words_->Find(*word);
  const rules::Place* place = words_->FindPlace(*word);
  if (!code || place == nullptr) return;
  diagnostic.notes.push_back(
      {fmt::format("{} is type {}, as defined here", *word, *code),
       diagnostics::LocationIn(*place->file, place->file->RangeAt(place->line))});
}

}  // namespace rux::advice
