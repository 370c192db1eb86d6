// Proposals for the parts of values, repeaters and other entries.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assistance/call.h"
#include "assistance/completion.h"
#include "assistance/place.h"
#include "assistance/proposals.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/part_use.h"
#include "index/records.h"
#include "index/spot.h"
#include "rules/wording.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/names.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "support/number_text.h"

namespace rux::assistance {
namespace {

using index::Index;
using index::Space;
using Kind = Proposal::Kind;

void Add(Kind kind, std::string_view name, std::string detail, ProposalList& proposals) {
  proposals.push_back({kind, std::string(name), std::move(detail), std::string(name)});
}

Id IdOf(const Index& index, const index::Symbol& symbol) {
  return static_cast<Id>(&symbol - index.symbols().data());
}

void AddSymbol(const Index& index, Kind kind, const index::Symbol& symbol, std::string detail,
               ProposalList& proposals) {
  Add(kind, symbol.name, std::move(detail), proposals);
  proposals.back().symbol = IdOf(index, symbol);
}

// Calls use(symbol, definition) for the names of a space, in a section where they are local to one.
template <class Use>
void ForEachName(const Writing& writing, const Space& space, Use use) {
  const Index& index = writing.index;
  const Id section = index::IsLocal(space) ? writing.spot.section : kNone;
  for (Id id = 0; id < index.symbols().size(); ++id) {
    const index::Symbol& symbol = index.symbols()[id];
    if (symbol.space != space || symbol.section != section) continue;
    const Id taken = index.TakenDefinitionOf(id);
    if (taken != kNone) use(symbol, index.definitions()[taken]);
  }
}

// In IFDEF and DEFINE sections, too: most words are defined in other files.
std::string WordDetail(const index::Definition& definition) {
  return support::NumberText(definition.value);
}

// `$1, $2` and so on, each with what belongs there.
class Snippet {
 public:
  explicit Snippet(std::string text) : text_(std::move(text)) {}
  void Add(std::string_view part) { text_ += fmt::format(", ${{{}:{}}}", ++count_, part); }
  const std::string& text() const { return text_; }
  bool has_places() const { return count_ > 0; }

 private:
  std::string text_;
  int count_ = 0;
};

// The type with the parts that it needs.
Snippet TypeSnippet(std::string_view name, const language::ValueType& type) {
  Snippet snippet{std::string(name)};
  for (std::size_t i = 0; i < type.fields.size() && i + 1 < type.least; ++i) {
    snippet.Add(rules::InWords(type.fields[i].name));
  }
  return snippet;
}

// Whether the value goes on after the part that is written.
bool HasMoreParts(const Writing& writing) {
  return index::PartsOf(writing.index, writing.spot.item).size() > writing.spot.part + 1;
}

// Which words have been used as types, by symbols.
std::vector<bool> TypesInUse(const Index& index) {
  std::vector<bool> in_use(index.symbols().size());
  for (const index::Reference& reference : index.references()) {
    const std::uint32_t payload = language::PayloadOf(index.items()[reference.item].entry);
    if (reference.symbol == kNone || reference.part != 0) continue;
    if (payload == language::PAYLOAD_VALUE) in_use[reference.symbol] = true;
  }
  return in_use;
}

Proposal TypeProposal(const Writing& writing, const index::Symbol& symbol, std::uint32_t code) {
  const language::ValueType& type = language::FindValueType(code);
  const Snippet snippet = TypeSnippet(symbol.name, type);
  const bool is_snippet = snippet.has_places() && !HasMoreParts(writing);
  return {Kind::kType,
          std::string(symbol.name),
          rules::PartsText(type),
          is_snippet ? snippet.text() : std::string(symbol.name),
          is_snippet,
          IdOf(writing.index, symbol)};
}

// An action with a place for each argument, when it is the last part.
Proposal ActionProposal(const Writing& writing, const index::Symbol& symbol,
                        const index::Definition& definition) {
  const std::uint32_t count = ArgumentsOf(writing.index, definition.section);
  Snippet snippet{std::string(symbol.name)};
  for (std::uint32_t i = 1; i <= count; ++i) snippet.Add(ArgumentText(i));
  const bool is_snippet = snippet.has_places() && !HasMoreParts(writing);
  return {Kind::kName,
          std::string(symbol.name),
          support::CountText(count, "argument"),
          is_snippet ? snippet.text() : std::string(symbol.name),
          is_snippet,
          IdOf(writing.index, symbol)};
}

void ProposeArguments(const Writing& writing, ProposalList& proposals) {
  const Index& index = writing.index;
  if (index.sections()[writing.spot.section].kind->source != language::SECTION_ACTION) return;
  const std::uint32_t count = ArgumentsOf(index, writing.spot.section);
  for (std::uint32_t i = 1; i <= count; ++i) {
    Add(Kind::kArgument, ArgumentText(i), "", proposals);
  }
}

void ProposeNamed(const Writing& writing, const language::NamedEntry& named,
                  ProposalList& proposals) {
  const Space space{named.section, named.entry};
  if (space == index::kArguments) return ProposeArguments(writing, proposals);
  const bool is_key = named.entry != language::ENTRY_NAME;
  if (is_key && index::IsLocal(space) &&
      writing.index.sections()[writing.spot.section].kind->source != named.section) {
    return;
  }
  ForEachName(
      writing, space, [&](const index::Symbol& symbol, const index::Definition& definition) {
        if (named.section == language::SECTION_ACTION && !is_key) {
          proposals.push_back(ActionProposal(writing, symbol, definition));
        } else if (is_key && definition.item != writing.spot.item) {
          AddSymbol(writing.index, index::IsLocal(space) ? Kind::kValue : Kind::kGlobal, symbol,
                    std::string(writing.index.items()[definition.item].item->value), proposals);
        } else if (!is_key) {
          AddSymbol(writing.index, Kind::kName, symbol, language::KindOf(named.section).keyword,
                    proposals);
        }
      });
}

void ProposeOperators(ProposalList& proposals) {
  for (const language::Operator& row : language::kOperators) {
    Add(Kind::kOperator, row.text, language::IsComparison(row.code) ? "comparison" : "arithmetic",
        proposals);
  }
}

// Words that other values have in the same field come first: bus types, for example.
void ProposeWordsOfField(const Writing& writing, ProposalList& proposals) {
  const Index& index = writing.index;
  const std::string_view field = writing.spot.use.field->name;
  std::vector<bool> in_use(index.symbols().size());
  std::vector<std::string_view> parts;
  for (const index::Reference& reference : index.references()) {
    if (reference.space != index::kWords || reference.symbol == kNone) continue;
    if (reference.role != language::Role::kNumber) continue;
    parts = index::PartsOf(index, reference.item);
    const std::uint32_t entry = index.items()[reference.item].entry;
    const language::ValueType* type = index.RecordOf(entry, parts.data(), parts.size());
    const language::SectionId kind =
        index.sections()[index.items()[reference.item].section].kind->source;
    const index::PartUse use = index::UseOfPart(kind, entry, type, reference.part);
    if (use.field != nullptr && use.field->name == field) in_use[reference.symbol] = true;
  }
  const std::size_t first = proposals.size();
  ProposeWords(writing, proposals);
  const bool is_bus_type = field == "BusType";
  std::stable_partition(proposals.begin() + static_cast<std::ptrdiff_t>(first), proposals.end(),
                        [&](const Proposal& proposal) {
                          const bool is_known =
                              is_bus_type && (proposal.label == language::kSmbus ||
                                              proposal.label == language::kSimpleIoPort);
                          return is_known || in_use[index.Find(index::kWords, proposal.label)];
                        });
}

}  // namespace

void ProposeWords(const Writing& writing, ProposalList& proposals) {
  ForEachName(writing, index::kWords,
              [&](const index::Symbol& symbol, const index::Definition& definition) {
                if (definition.item == writing.spot.item) return;
                AddSymbol(writing.index, Kind::kWord, symbol, WordDetail(definition), proposals);
              });
}

void ProposeTypes(const Writing& writing, ProposalList& proposals) {
  const Index& index = writing.index;
  const std::vector<bool> in_use = TypesInUse(index);
  for (const bool is_used : {true, false}) {
    for (Id id = 0; id < index.symbols().size(); ++id) {
      const index::Symbol& symbol = index.symbols()[id];
      if (symbol.space != index::kWords || in_use[id] != is_used) continue;
      const std::uint32_t code = *index.words().Find(symbol.name);
      const bool is_type = language::FindValueType(code).shape != language::Shape::kNone;
      if (is_used || is_type) proposals.push_back(TypeProposal(writing, symbol, code));
    }
  }
}

void ProposeReferents(const Writing& writing, ProposalList& proposals) {
  const language::Reference& row = *writing.spot.use.reference;
  const Space space{row.target, row.key};
  // What must be in a list is new.
  if (language::PayloadOf(row.key) == language::PAYLOAD_STRINGLIST) return;
  const bool has_numbers = index::HasNumbers(space);
  const std::vector<std::string_view> parts = index::PartsOf(writing.index, writing.spot.item);
  ForEachName(
      writing, space, [&](const index::Symbol& symbol, const index::Definition& definition) {
        if (definition.section == writing.spot.section) return;
        const bool is_there = std::find(parts.begin(), parts.end(), symbol.name) != parts.end();
        const bool is_list = language::PayloadOf(row.entry) == language::PAYLOAD_STRINGLIST;
        if (is_list && is_there) return;
        AddSymbol(writing.index, has_numbers ? Kind::kId : Kind::kName, symbol,
                  TitleOf(writing.index, definition), proposals);
      });
  if (row.unless != language::RefersUnless::kNever) {
    Add(has_numbers ? Kind::kId : Kind::kName, language::kRootGroup, "none above", proposals);
  }
}

void ProposeParts(const Writing& writing, ProposalList& proposals) {
  const language::Role role = writing.spot.use.role;
  if (role == language::Role::kOperator) return ProposeOperators(proposals);
  if (role == language::Role::kNumber) return ProposeWordsOfField(writing, proposals);
  bool takes_any = false;
  for (const language::NamedEntry& named : language::NamedBy(role)) {
    ProposeNamed(writing, named, proposals);
    takes_any |= named.prefix.empty();
  }
  if (!takes_any) ProposeWords(writing, proposals);
}

}  // namespace rux::assistance
