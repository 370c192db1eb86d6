#include "assistance/hover.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/place.h"
#include "assistance/targets.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/part_use.h"
#include "index/records.h"
#include "index/spot.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"
#include "sources/source_file.h"
#include "support/number_text.h"

namespace rux::assistance {
namespace {

using index::Index;
using index::Spot;
using Paragraphs = std::vector<std::string>;

std::string Joined(const std::vector<std::string>& texts, std::string_view between) {
  return fmt::format("{}", fmt::join(texts, between));
}

// The row of a kind that takes such an entry.
language::Notation NotationOf(const language::SectionKind& kind, std::uint32_t entry) {
  for (const language::EntryTemplate& row : kind.templates) {
    if (row.identifier == entry) return row.notation;
  }
  return language::kOptional;
}

std::string RequiredKeys(const language::SectionKind& kind) {
  std::vector<std::string> keys;
  for (const language::EntryTemplate& row : kind.templates) {
    if ((row.notation & language::kRequired) == 0) continue;
    keys.push_back(Code(language::KeywordOf(row.identifier)));
  }
  return keys.empty() ? "" : "; requires " + Joined(keys, ", ");
}

void AddKey(const Index& index, const Spot& spot, Paragraphs& text) {
  const language::SectionKind& kind = *index.sections()[spot.section].kind;
  const index::ItemRecord& item = index.items()[spot.item];
  if (item.entry == 0) {
    text.push_back(fmt::format("not a key of `[{}]`", kind.keyword));
    return;
  }
  text.push_back(fmt::format("{} in `[{}]`: {}", Code(item.item->key), kind.keyword,
                             KeyText(kind, item.entry, NotationOf(kind, item.entry))));
}

// The lines of a section or item, cut where they are many.
std::string Lines(const sources::SourceFile& file, ByteRange range) {
  constexpr std::uint32_t kMost = 24;
  const std::uint32_t first = file.LineAt(range.begin);
  const std::uint32_t last = file.LineAt(range.end - 1);
  std::string text;
  for (std::uint32_t line = first; line <= std::min(last, first + kMost - 1); ++line) {
    if (line > first) text += '\n';
    text += file.Line(line);
  }
  return last - first < kMost ? text : text + "\n...";
}

// The PELMGROUPs that have a sensor in their lists.
void AddLists(const Index& index, Id section, Paragraphs& text) {
  const Id id = index.DefinitionIn(section, language::ENTRY_ID);
  const language::SectionId kind = index.sections()[section].kind->source;
  const language::Reference* row = language::FindReference(kind, language::ENTRY_ID);
  if (id == kNone || row == nullptr || index.definitions()[id].symbol == kNone) return;
  const Id lists = index.Find({row->target, row->key}, index.definitions()[id].value);
  if (lists == kNone) return;
  std::vector<std::string> names;
  for (const Id at : index.DefinitionsOf(lists)) {
    std::string name = Code(NameOf(index, index.definitions()[at].section));
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  }
  if (!names.empty()) {
    text.push_back(
        fmt::format("in the {} of {}", language::KeywordOf(row->key), Joined(names, ", ")));
  }
}

// The numbers of a section that it may do without, such as limits, where they are words.
void AddNumbers(const Index& index, Id section, Paragraphs& text) {
  const language::SectionKind& kind = *index.sections()[section].kind;
  std::vector<std::string> numbers;
  for (const index::ItemRecord& item : index.ItemsOf(section)) {
    const bool is_optional = (NotationOf(kind, item.entry) & language::kOptional) != 0;
    if (!language::IsNumericString(item.entry) || !is_optional) continue;
    const auto number = index.words().WordOrNumber(ruxcomp::reader::FirstPart(*item.item));
    if (!number) continue;
    numbers.push_back(fmt::format("{} {}", item.item->key, support::NumberText(*number)));
  }
  if (!numbers.empty()) text.push_back(Joined(numbers, ", "));
}

void AddSection(const Index& index, Id section, Paragraphs& text) {
  const index::SectionRecord& record = index.sections()[section];
  text.push_back(CodeBlock(Lines(*index.files()[record.file], index.RangeOfSection(section))));
  AddNumbers(index, section, text);
  AddLists(index, section, text);
}

void AddWord(const Index& index, Id symbol, const index::Definition& definition, Paragraphs& text) {
  const std::string_view name = index.symbols()[symbol].name;
  std::string line = fmt::format("word {} = {}", Code(name), support::NumberText(definition.value));
  const std::string_view written = ruxcomp::reader::FirstPart(*index.items()[definition.item].item);
  if (!language::ReadNumber(written).is_number) line += fmt::format(", from {}", Code(written));
  line += fmt::format(", defined at {}", PlaceText(index, LocationOf(definition)));
  text.push_back(line);
  const index::Definition& last = index.definitions()[index.TakenDefinitionOf(symbol)];
  if (&last != &definition) {
    text.push_back(fmt::format("defined again at {}, as {}", PlaceText(index, LocationOf(last)),
                               support::NumberText(last.value)));
  }
}

void AddDefinition(const Index& index, Id symbol, const index::Definition& definition,
                   Paragraphs& text) {
  const index::Space& space = index.symbols()[symbol].space;
  if (space == index::kWords) return AddWord(index, symbol, definition, text);
  if (definition.item == kNone) {
    text.push_back(fmt::format("file {}", Code(TitleOf(index, definition))));
    return;
  }
  const std::string place = PlaceText(index, LocationOf(definition));
  if (space == index::kArguments) {
    text.push_back(fmt::format("argument of {}, {}", Code(TitleOf(index, definition)), place));
    return;
  }
  text.push_back(fmt::format("{}, {}", Code(TitleOf(index, definition)), place));
  const bool is_of_section =
      space.entry == language::ENTRY_NAME || space.entry == language::ENTRY_ID;
  if (is_of_section) return AddSection(index, definition.section, text);
  text.push_back(
      CodeBlock(Lines(*index.files()[definition.file], index.RangeOfItem(definition.item))));
}

void AddType(const Index& index, const Spot& spot, std::string_view name, Paragraphs& text) {
  const auto code = index.words().Find(name);
  if (!code) return;
  const std::vector<std::string_view> parts = index::PartsOf(index, spot.item);
  const language::ValueType& type =
      *index.RecordOf(index.items()[spot.item].entry, parts.data(), parts.size());
  std::vector<std::string> rows;
  for (std::size_t i = 0; i < type.fields.size() && i + 1 < type.most; ++i) {
    rows.push_back(PartText(type, i));
  }
  text.push_back(fmt::format("value type {}: {}", *code,
                             rows.empty() ? "nothing follows it" : Joined(rows, ", ")));
}

void AddNames(const Place& at, Paragraphs& text) {
  const Index& index = at.index;
  const index::NamesAt names = index::FindNames(index, at.file, at.offset);
  for (const Id id : names.references) {
    const index::Reference& reference = index.references()[id];
    if (reference.symbol == kNone || !IsName(index.symbols()[reference.symbol])) continue;
    if (reference.hides) text.emplace_back("a word hides it: its number is compiled");
    if (reference.definition == kNone) continue;
    AddDefinition(index, reference.symbol, index.definitions()[reference.definition], text);
  }
  if (!text.empty()) return;
  for (const Id id : names.definitions) {
    const index::Definition& definition = index.definitions()[id];
    if (definition.symbol == kNone || !IsName(index.symbols()[definition.symbol])) continue;
    AddDefinition(index, definition.symbol, definition, text);
  }
}

void AddPart(const Place& at, const Spot& spot, Paragraphs& text) {
  const std::string_view part = TextAt(at.index, {at.file, spot.text});
  if (spot.use.use == index::Use::kType) AddType(at.index, spot, part, text);
  if (spot.use.use == index::Use::kDropped) text.emplace_back("the compiler drops this part");
  const bool may_be_number =
      spot.use.use == index::Use::kNumber || spot.use.use == index::Use::kField;
  const language::Number number = language::ReadNumber(part);
  if (may_be_number && number.is_number) text.push_back(support::NumberText(number.value));
}

}  // namespace

std::optional<Hover> HoverAt(const Place& at) {
  const Spot spot = index::SpotAt(at.index, at.file, at.offset);
  if (spot.text.begin == spot.text.end) return std::nullopt;
  Paragraphs text;
  if (spot.kind == Spot::Kind::kHeader) {
    const language::SectionKind* kind = at.index.sections()[spot.section].kind;
    if (kind == nullptr) return std::nullopt;
    text.push_back(fmt::format("`[{}]` section{}", kind->keyword, RequiredKeys(*kind)));
  }
  if (spot.kind == Spot::Kind::kPart) AddPart(at, spot, text);
  Paragraphs names;
  AddNames(at, names);
  if (spot.kind == Spot::Kind::kKey && names.empty()) AddKey(at.index, spot, names);
  text.insert(text.end(), names.begin(), names.end());
  if (text.empty()) return std::nullopt;
  return Hover{spot.text, Joined(text, "\n\n")};
}

}  // namespace rux::assistance
