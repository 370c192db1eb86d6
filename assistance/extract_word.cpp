// Numbers that get names.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/edit.h"
#include "assistance/new_name.h"
#include "assistance/place.h"
#include "assistance/refactorings.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/part_use.h"
#include "index/spot.h"
#include "reader/value.h"
#include "rules/wording.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"
#include "sources/source_file.h"
#include "support/ascii.h"

namespace rux::assistance {
namespace {

using index::Index;
using index::Spot;

bool CanBeWord(const Place& at, const Spot& spot, std::string_view text) {
  const Index& index = at.index;
  const language::Number number = language::ReadNumber(text);
  if (!number.is_number || number.has_rest || number.is_cut) return false;
  const language::SectionId kind = index.sections()[spot.section].kind->source;
  const std::uint32_t entry = index.items()[spot.item].entry;
  // What DEFINE and IFDEF sections have are words already; ARGNUMBER and the counts of repeaters
  // are plain numbers.
  if (kind == language::SECTION_DEFINE || kind == language::SECTION_IFDEF) return false;
  if (entry == language::ENTRY_ARGNUMBER || spot.use.role == language::Role::kRepeatCount) {
    return false;
  }
  // Of some buses, the base address has to be written as a zero.
  if (spot.use.use == index::Use::kField) {
    return number.value != 0 || std::string_view(spot.use.field->name) != "BaseAddress";
  }
  const index::NamesAt names = index::FindNames(index, at.file, at.offset);
  return spot.use.use == index::Use::kNumber && names.definitions.empty() &&
         names.references.empty();
}

// In capitals, with '_' for all that is neither a letter nor a digit.
std::string InCapitals(std::string_view text) {
  std::string name;
  for (const char c : text) name += support::IsLetterOrDigit(c) ? support::ToUpper(c) : '_';
  return name;
}

// What the number is: the name of the section, or its kind; the key; in a value, the field.
std::string Description(const Index& index, const Spot& spot) {
  const std::string_view name = NameOf(index, spot.section);
  std::string text(name.empty() ? index.sections()[spot.section].kind->keyword : name);
  text.append("_").append(index.items()[spot.item].item->key);
  if (spot.use.field != nullptr) text += '_' + rules::InWords(spot.use.field->name);
  return InCapitals(text);
}

// Empty when none is free: a name that something has already, or that the library would take for
// something else, is none.
std::string FreeName(const Index& index, const Spot& spot) {
  constexpr int kMostTries = 20;
  const std::string described = Description(index, spot);
  const std::string of_kind =
      fmt::format("{}_{}", index.sections()[spot.section].kind->keyword, described);
  for (const std::string& stem : {described, of_kind}) {
    for (int i = 1; i <= kMostTries; ++i) {
      std::string name = i == 1 ? stem : fmt::format("{}_{}", stem, i);
      if (WhyNoNewWord(index, name).empty()) return name;
    }
  }
  return {};
}

// The lines above a header that are comments belong to its section.
std::uint32_t LineOfSection(const sources::SourceFile& file, std::uint32_t header_line) {
  std::uint32_t line = header_line;
  while (line > 1 && ruxcomp::reader::IsCommentLine(file.Line(line - 1))) --line;
  return line;
}

// In the last DEFINE section of the file before that one; without any, in a new one there.
Edit DefinitionBefore(const Index& index, Id section, const std::string& line) {
  const Id number = index.sections()[section].file;
  Id found = kNone;
  for (const Id other : index.SectionsOf(number)) {
    if (other == section) break;
    const language::SectionKind* kind = index.sections()[other].kind;
    if (kind != nullptr && kind->source == language::SECTION_DEFINE) found = other;
  }
  if (found != kNone) return LinesAfter(index, found, {line});
  const sources::SourceFile& file = *index.files()[number];
  const std::uint32_t header_line = index.sections()[section].section->line;
  const std::uint32_t at =
      std::max(file.LineStart(LineOfSection(file, header_line)), BeginOf(file));
  const std::string_view end = LineEndOf(file);
  return {{number, {at, at}},
          fmt::format("[{}]{}{}{}{}", language::KindOf(language::SECTION_DEFINE).keyword, end, line,
                      end, end)};
}

}  // namespace

void ExtractWord(const Place& at, Refactorings& refactorings) {
  const Index& index = at.index;
  const Spot spot = index::SpotAt(index, at.file, at.offset);
  if (spot.kind != Spot::Kind::kPart || spot.text.begin == spot.text.end) return;
  const std::string_view text = TextAt(index, {at.file, spot.text});
  if (!CanBeWord(at, spot, text)) return;
  const std::string name = FreeName(index, spot);
  if (name.empty()) return;
  refactorings.push_back(
      {Refactoring::Kind::kExtract,
       fmt::format("Define {} as {}", name, text),
       {DefinitionBefore(index, spot.section, fmt::format("{} = {}", name, text)),
        {{at.file, spot.text}, name}}});
}

}  // namespace rux::assistance
