#include "assistance/tokens.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "assistance/place.h"
#include "assistance/targets.h"
#include "index/index.h"
#include "index/part_use.h"
#include "index/records.h"
#include "index/spot.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

using index::Index;
using index::Use;
using TokenKind = Token::Kind;

TokenKind KindOfSpace(const index::Space& space) {
  if (space == index::kWords) return TokenKind::kWord;
  if (space == index::kArguments) return TokenKind::kArgument;
  if (space == index::kFiles) return TokenKind::kText;
  if (index::HasNumbers(space)) return TokenKind::kNumber;
  const bool is_name = space.entry == language::ENTRY_NAME;
  if (is_name && space.section == language::SECTION_ACTION) return TokenKind::kAction;
  if (is_name && space.section == language::SECTION_TABLE) return TokenKind::kTable;
  if (is_name) return TokenKind::kName;
  if (space.section == language::SECTION_GLOBAL) return TokenKind::kGlobal;
  return language::PayloadOf(space.entry) == language::PAYLOAD_VALUE ? TokenKind::kValue
                                                                     : TokenKind::kProperty;
}

std::optional<TokenKind> KindOfUse(const index::PartUse& use, std::string_view part) {
  const bool is_number = language::ReadNumber(part).is_number;
  switch (use.use) {
    case Use::kText:
    case Use::kPath:
      return TokenKind::kText;
    case Use::kField:
      if (use.role == language::Role::kOperator) return TokenKind::kOperator;
      if (use.role == language::Role::kNone) return TokenKind::kText;
      [[fallthrough]];
    case Use::kNumber:
      return is_number ? std::optional(TokenKind::kNumber) : std::nullopt;
    default:
      return std::nullopt;
  }
}

// The items of one file.
class TokenReader {
 public:
  TokenReader(const Index& index, Id file) : index_(index), file_(*index.files()[file]) {}

  void Read(Id section) {
    const index::SectionRecord& record = index_.sections()[section];
    if (record.kind == nullptr) return;
    Add(record.section->name, TokenKind::kSection, false);
    for (const index::ItemRecord& item : index_.ItemsOf(section)) {
      const auto id = static_cast<Id>(&item - index_.items().data());
      ReadKey(id, item);
      ReadParts(id, item, *record.kind);
    }
  }

  std::vector<Token> Take() { return std::move(tokens_); }

 private:
  void Add(std::string_view text, TokenKind kind, bool is_definition) {
    if (!text.empty()) tokens_.push_back({file_.RangeOf(text), kind, is_definition});
  }

  // What the text defines; none: nothing.
  std::optional<TokenKind> DefinedBy(Id item, std::string_view text) const {
    const ByteRange range = file_.RangeOf(text);
    for (const index::Definition& each : index_.DefinitionsIn(item)) {
      if (each.symbol == kNone || each.name.begin != range.begin) continue;
      const index::Symbol& symbol = index_.symbols()[each.symbol];
      // A number of arguments is none.
      if (IsName(symbol) && symbol.space != index::kArguments) return KindOfSpace(symbol.space);
    }
    return std::nullopt;
  }

  void ReadKey(Id id, const index::ItemRecord& item) {
    if (const auto defined = DefinedBy(id, item.item->key)) {
      Add(item.item->key, *defined, true);
    } else if (item.entry != 0) {
      Add(item.item->key, TokenKind::kKey, false);
    }
  }

  // What the part refers to; none: nothing that is defined.
  std::optional<TokenKind> ReferredBy(Id item, std::uint32_t part) const {
    for (const index::Reference& each : index_.ReferencesIn(item)) {
      if (each.part != part || each.symbol == kNone) continue;
      if (IsName(index_.symbols()[each.symbol])) return KindOfSpace(each.space);
    }
    return std::nullopt;
  }

  void ReadParts(Id id, const index::ItemRecord& item, const language::SectionKind& kind) {
    const std::vector<std::string_view> parts = index::PartsOf(index_, id);
    const auto* record = index_.RecordOf(item.entry, parts.data(), parts.size());
    for (std::uint32_t i = 0; i < parts.size(); ++i) {
      const index::PartUse use = index::UseOfPart(kind.source, item.entry, record, i);
      if (use.use == Use::kDropped) continue;
      const auto defined = DefinedBy(id, parts[i]);
      std::optional<TokenKind> found = defined ? defined : ReferredBy(id, i);
      if (use.use == Use::kType && found) found = TokenKind::kType;
      if (!found) found = KindOfUse(use, parts[i]);
      if (found) Add(parts[i], *found, defined.has_value());
    }
  }

  const Index& index_;
  const sources::SourceFile& file_;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> TokensOf(const Index& index, Id file) {
  TokenReader reader(index, file);
  for (const Id section : index.SectionsOf(file)) reader.Read(section);
  return reader.Take();
}

}  // namespace rux::assistance
