#include "assistance/new_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "assistance/place.h"
#include "index/index.h"
#include "index/records.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/names.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace rux::assistance {
namespace {

using index::Index;

std::string WhyNoText(std::string_view name) {
  if (name.empty()) return "a name has at least one character";
  for (const char c : name) {
    if (c == '"') return "a double quote cannot be in a name";
    if (c == '\n' || c == '\r' || c == '\0') return "a name is on one line";
  }
  return {};
}

// What begins or ends in a blank, or has a comma or a comment in it, is cut.
bool IsCut(std::string_view name) {
  if (ruxcomp::reader::Trim(name).size() != name.size()) return true;
  if (name.find(',') != std::string_view::npos || name.back() == '\\') return true;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool may_begin = i == 0 || ruxcomp::reader::IsBlank(name[i - 1]);
    if (may_begin && ruxcomp::reader::IsCommentSign(name[i])) return true;
  }
  return false;
}

// A key has to become an entry of the same row.
std::string WhyNoKey(const index::Space& space, std::string_view name) {
  const bool is_cut =
      IsCut(name) || name.find('=') != std::string_view::npos || name.front() == '[';
  if (is_cut) return fmt::format("{} cannot be a key", name);
  const language::SectionKind& kind = language::KindOf(space.section);
  // Of an IFDEF section, only the first item is the condition.
  const std::uint32_t entry = language::EntryOfRow(kind, language::FindKeyRow(kind, name, 1));
  const std::string_view keyword = language::KeywordOf(space.entry);
  const bool fits = entry == space.entry && (keyword.empty() || language::HasPrefix(name, keyword));
  if (!fits && keyword.empty()) return fmt::format("{} is a key of its own here", name);
  if (!fits) return fmt::format("the name must begin with {} and continue after it", keyword);
  const std::string_view rest = name.substr(keyword.size());
  switch (language::NameFormOf(space.entry)) {
    case language::NameForm::kNoDigitFirst:
      if (rest.front() < '0' || rest.front() > '9') return {};
      return "the name must not begin with a digit";
    case language::NameForm::kNumber:
      if (language::ReadNumber(rest).is_number) return {};
      return fmt::format("a number must follow {}", keyword);
    case language::NameForm::kAny:
    case language::NameForm::kCells:
      return {};
  }
  return {};
}

std::string WhyNoNumber(const Index& index, std::string_view name) {
  if (index.words().FindWord(name) != nullptr) return fmt::format("{} is a word", name);
  const language::Number number = language::ReadNumber(name);
  const bool is_plain = number.is_number && !number.has_rest && !number.is_cut;
  return is_plain ? std::string() : fmt::format("{} is not a number", name);
}

std::string WhyNoWord(std::string_view name) {
  if (language::ReadNumber(name).is_number) {
    return fmt::format("{} is read as a number", name);
  }
  const language::NamedEntry* named = language::FindNamed(language::Role::kOperand, name);
  if (named != nullptr) {
    return fmt::format("operands that begin with {} are not words", named->prefix);
  }
  if (name == language::kSmbus || name == language::kSimpleIoPort) {
    return fmt::format("the compiler gives {} a meaning of its own", name);
  }
  return {};
}

// Whether what has no definition so far would get one.
bool IsMissed(const Index& index, const index::Symbol& symbol, std::string_view name) {
  return std::any_of(
      index.references().begin(), index.references().end(), [&](const index::Reference& each) {
        const Id section = index.items()[each.item].section;
        const bool is_here = symbol.section == kNone || symbol.section == section;
        return each.resolution == index::Resolution::kMissing && each.space == symbol.space &&
               is_here && TextAt(index, LocationOf(each)) == name;
      });
}

// P_X and VALUE_X have the same name for hosts.
bool HasSharedName(const Index& index, const index::Symbol& symbol, std::string_view name) {
  if (symbol.section == kNone || symbol.space.section == language::SECTION_ACTION) return false;
  const language::EntryRow& row = *language::FindEntryRow(symbol.space.entry);
  const auto items = index.ItemsOf(symbol.section);
  return std::any_of(items.begin(), items.end(), [&](const index::ItemRecord& item) {
    const language::EntryRow* other = language::FindEntryRow(item.entry);
    if (other == nullptr || other->prefix.empty() || other->source == row.source) return false;
    return language::BeginsWith(item.item->key, other->prefix) &&
           language::NameInKey(*other, item.item->key) == language::NameInKey(row, name);
  });
}

std::string WhyTaken(const Index& index, const index::Symbol& symbol, std::string_view name) {
  const index::Space& space = symbol.space;
  const Id taken = index::HasNumbers(space)
                       ? index.Find(space, language::ReadNumber(name).value, symbol.section)
                       : index.Find(space, name, symbol.section);
  const bool is_same = taken != kNone && &index.symbols()[taken] == &symbol;
  const Id at = taken == kNone ? kNone : index.TakenDefinitionOf(taken);
  if (at != kNone && !is_same) {
    return fmt::format("{} is taken, at {}", name,
                       PlaceText(index, LocationOf(index.definitions()[at])));
  }
  if (IsMissed(index, symbol, name)) {
    return fmt::format("{} is referred to already, without a definition", name);
  }
  const bool is_operand = language::FindNamed(language::Role::kOperand, name) != nullptr;
  if (is_operand && space != index::kWords && index.words().FindWord(name) != nullptr) {
    return fmt::format("the word {} would hide it", name);
  }
  if (HasSharedName(index, symbol, name)) {
    return "the section has that name for hosts already";
  }
  return {};
}

std::string WhyNoNameIn(const Index& index, const index::Symbol& symbol, std::string_view name) {
  const index::Space& space = symbol.space;
  if (index::HasNumbers(space)) return WhyNoNumber(index, name);
  if (space.entry == language::ENTRY_NAME) {
    const bool is_root = space.section == language::SECTION_GROUP && name == language::kRootGroup;
    return is_root ? fmt::format("{} is the root of all groups", name) : std::string();
  }
  const std::string no_key = WhyNoKey(space, name);
  return no_key.empty() && space == index::kWords ? WhyNoWord(name) : no_key;
}

std::string WhyNotNamed(const Index& index, const index::Symbol& symbol, std::string_view name) {
  std::string why = WhyNoText(name);
  if (why.empty()) why = WhyNoNameIn(index, symbol, name);
  if (why.empty()) why = WhyTaken(index, symbol, name);
  return why;
}

}  // namespace

bool NeedsQuotes(std::string_view name) { return IsCut(name); }

std::string WhyNoName(const Index& index, Id symbol, std::string_view name) {
  return WhyNotNamed(index, index.symbols()[symbol], name);
}

std::string WhyNoNewWord(const Index& index, std::string_view name) {
  return WhyNotNamed(index, {index::kWords, kNone, 0, {}}, name);
}

}  // namespace rux::assistance
