// The look-ups of the second pass over the model.
#ifndef CHECKER_MODEL_INDEX_H_
#define CHECKER_MODEL_INDEX_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "frontend/lookup.h"

// Answers what the rules of the second pass look for. Each rule is a walk over all sections of a
// kind; as the model does not change during the pass, an index that is built when a rule first asks
// gives the same answers at a cost that does not grow with the model.
//
// The pass makes one and hands it to the checks.
class ModelIndex {
 public:
  // The first section of a kind that has something, and the entry in which it has it.
  struct FirstDefinition {
    std::size_t ordinal;  // of the section among those of its kind
    const CRUXSection* section;
    const CRUXEntry* entry;
  };

  // All of them answer null when there is none. By NAME: a section without NAME counts as named "",
  // and its entry is null. By ID: only IDs that are numbers count, not defined words. By entry: the
  // name of any entry that the script gave.
  const FirstDefinition* ByName(SectionId kind, std::string_view name);
  const FirstDefinition* ById(SectionId kind, std::uint32_t number);
  const FirstDefinition* ByEntry(SectionId kind, std::string_view name);

  // Whether any two sections of the kind would be found by the same NAME or ID: mostly none are,
  // and then nobody need look for an earlier one.
  bool HasRepeatedName(SectionId kind);
  bool HasRepeatedId(SectionId kind);

  // Whether some section of the kind has that ID, given as a number or as a defined word.
  bool HasId(SectionId kind, std::uint32_t number);

  // Whether the SENSORS list of some PELMGROUP section has that number. Raises what StringToLong
  // raises when an element of no digits stands before the first that has it.
  bool IsListed(std::uint32_t number);

  // Whether some GLOBAL section has that entry.
  bool HasGlobal(std::string_view name);

  // Whether the section has an entry "VALUE_..." of that name.
  bool HasValue(const CRUXSection& section, std::string_view name);

  // Whether a GROUP of that name has its header on a smaller line, whatever file it stands in.
  bool HasGroupAbove(std::string_view name, std::uint32_t line);

 private:
  template <class Key>
  struct FirstDefinitions {
    std::unordered_map<Key, FirstDefinition> by_key;
    bool has_repeat = false;

    void Add(const Key& key, const FirstDefinition& section) {
      if (!by_key.try_emplace(key, section).second) has_repeat = true;
    }
  };
  template <class Index>
  using PerKind = std::map<SectionId, Index>;  // built when it is first asked
  using Numbers = std::unordered_set<std::uint32_t>;
  using Names = std::unordered_set<std::string_view>;

  // The numbers of all SENSORS lists up to the first element that raises an error.
  struct Listed {
    Numbers numbers;
    const std::string* raising = nullptr;
    findings::Origin at = {};  // of the raising element
  };

  static FirstDefinitions<std::string_view> IndexNames(SectionId kind);
  static FirstDefinitions<std::uint32_t> IndexIds(SectionId kind);
  static FirstDefinitions<std::string_view> IndexEntries(SectionId kind);
  static Listed IndexLists();

  PerKind<FirstDefinitions<std::string_view>> names_;
  PerKind<FirstDefinitions<std::uint32_t>> ids_;
  PerKind<FirstDefinitions<std::string_view>> entries_;
  PerKind<Numbers> ids_and_words_;
  std::optional<Listed> listed_;
  std::optional<Names> globals_;
  std::optional<std::unordered_map<std::string_view, std::uint32_t>> group_lines_;

  // Values are looked for in the section that is being checked.
  const CRUXSection* values_of_ = nullptr;
  Names values_;
};

#endif  // CHECKER_MODEL_INDEX_H_
