#include "assistance/rename.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/edit.h"
#include "assistance/new_name.h"
#include "assistance/place.h"
#include "assistance/targets.h"
#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"
#include "ruxcomp/language/spelling.h"

namespace rux::assistance {
namespace {

using index::Index;

// Whether it is a name of the compiler's own.
bool IsFixed(const index::Symbol& symbol) {
  const bool is_bus_type =
      symbol.name == language::kSmbus || symbol.name == language::kSimpleIoPort;
  return symbol.space == index::kWords && is_bus_type;
}

// Whether operands have the name and mean the word that has it, too.
bool HidesOrIsHidden(const Index& index, const index::Symbol& symbol) {
  if (index::HasNumbers(symbol.space)) return false;
  const Id word = index.Find(index::kWords, symbol.name);
  if (word == kNone) return false;
  const auto references = index.ReferencesTo(word);
  return std::any_of(references.begin(), references.end(),
                     [&](Id id) { return index.references()[id].hides; });
}

// Why a symbol keeps its name, whatever the new one is; empty when it does not.
std::string WhyNot(const Index& index, Id symbol) {
  const index::Symbol& named = index.symbols()[symbol];
  if (named.space == index::kFiles) return "a file is renamed in its folder";
  if (named.space == index::kArguments) return "the number of an argument is its name";
  if (named.space.entry == language::ENTRY_TABLE_ROW) return "a row of a table has no name";
  if (IsFixed(named)) return fmt::format("the compiler knows {} by its name", named.name);
  if (HidesOrIsHidden(index, named)) {
    return fmt::format("{} is also a defined word, whose number is compiled", named.name);
  }
  return {};
}

struct Target {
  Id symbol = kNone;
  std::string refusal;
};

Target TargetAt(const Place& at) {
  const std::vector<Id> symbols = SymbolsAt(at);
  if (symbols.empty()) return {kNone, "no name of the script's own is here"};
  // At a number that a word gives, the word is meant.
  const auto is_word = [&](Id id) { return at.index.symbols()[id].space == index::kWords; };
  const auto word = std::find_if(symbols.begin(), symbols.end(), is_word);
  const Id symbol = word == symbols.end() ? symbols.front() : *word;
  return {symbol, WhyNot(at.index, symbol)};
}

ByteRange RangeAt(const Place& at, Id symbol) {
  const index::NamesAt names = index::FindNames(at.index, at.file, at.offset);
  for (const Id id : names.references) {
    if (at.index.references()[id].symbol == symbol) return at.index.references()[id].name;
  }
  for (const Id id : names.definitions) {
    if (at.index.definitions()[id].symbol == symbol) return at.index.definitions()[id].name;
  }
  return {};
}

// A place that has the name.
struct Mention {
  Location at;
  Id item;
};

// Those of definitions first.
std::vector<Mention> MentionsOf(const Index& index, Id symbol) {
  std::vector<Mention> mentions;
  for (const Id id : index.DefinitionsOf(symbol)) {
    const index::Definition& definition = index.definitions()[id];
    mentions.push_back({LocationOf(definition), definition.item});
  }
  for (const Id id : index.ReferencesTo(symbol)) {
    const index::Reference& reference = index.references()[id];
    mentions.push_back({LocationOf(reference), reference.item});
  }
  return mentions;
}

// IDs are written in many ways: all but plain numbers are words, whose definition is elsewhere.
std::string WhyNotAt(const Index& index, const Location& at, bool is_number) {
  const std::string_view text = TextAt(index, at);
  if (text.find('\n') != std::string_view::npos) {
    return fmt::format("{}: the name is on two lines", PlaceText(index, at));
  }
  if (is_number && index.words().FindWord(text) != nullptr) {
    return fmt::format("{}: the number is given by the word {}", PlaceText(index, at), text);
  }
  return {};
}

}  // namespace

Renamable RenamableAt(const Place& at) {
  const Target target = TargetAt(at);
  if (!target.refusal.empty()) return {{}, {}, target.refusal};
  const ByteRange range = RangeAt(at, target.symbol);
  return {range, std::string(TextAt(at.index, {at.file, range})), {}};
}

Renaming Rename(const Place& at, std::string_view name) {
  const Target target = TargetAt(at);
  if (!target.refusal.empty()) return {{}, target.refusal};
  const index::Symbol& symbol = at.index.symbols()[target.symbol];
  Renaming renaming;
  renaming.refusal = WhyNoName(at.index, target.symbol, name);
  if (!renaming.refusal.empty()) return renaming;
  const bool is_number = index::HasNumbers(symbol.space);
  for (const Mention& mention : MentionsOf(at.index, target.symbol)) {
    if (renaming.refusal.empty()) renaming.refusal = WhyNotAt(at.index, mention.at, is_number);
    renaming.edits.push_back(NewPart(at.index, mention.at, mention.item, name));
  }
  if (!renaming.refusal.empty()) renaming.edits.clear();
  return renaming;
}

}  // namespace rux::assistance
