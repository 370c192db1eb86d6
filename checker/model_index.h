// The look-ups of the second pass over the model.
#ifndef CHECKER_MODEL_INDEX_H_
#define CHECKER_MODEL_INDEX_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "findings/origin.h"
#include "frontend/section.h"
#include "ruxcomp/model/hash_index.h"
#include "ruxcomp/model/seeded_hash.h"

namespace ruxcomp::core {

// Answers what the rules of the second pass look for. By the rules, each look-up is a walk over all
// sections of a kind. The model does not change during the pass, so an index that is built at the
// first look-up gives the same answers, each in constant time.
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

  // Null when there is none.
  //
  // ByName            by the text of NAME
  // ByNameOrNameless  the same; a section without NAME counts as named "", and its entry is null
  // ById              by an ID that is a number; IDs that are defined words do not count
  // ByEntry           by the name of any entry that the script gave
  const FirstDefinition* ByName(SectionId kind, std::string_view name);
  const FirstDefinition* ByNameOrNameless(SectionId kind, std::string_view name);
  const FirstDefinition* ById(SectionId kind, std::uint32_t number);
  const FirstDefinition* ByEntry(SectionId kind, std::string_view name);

  // The first section of a kind with an ID, whatever its text, and the first one whose ID raises an
  // error when it is read.
  const FirstDefinition* FirstWithId(SectionId kind);
  const FirstDefinition* FirstRaisingId(SectionId kind);

  // Whether two sections of the kind have the same NAME or ID, or the ID of one raises an error.
  // Mostly not, and then no rule need look for an earlier section.
  bool HasRepeatedName(SectionId kind);
  bool HasRepeatedOrRaisingId(SectionId kind);

  // Whether some section of the kind has that ID, given as a number or as a defined word; and
  // whether the SENSORS list of some PELMGROUP section has that number. Both raise what
  // StringToLong raises when a text without digits comes before the first match.
  bool HasId(SectionId kind, std::uint32_t number);
  bool IsListed(std::uint32_t number);

  // Whether some GLOBAL section has that entry.
  bool HasGlobal(std::string_view name);

  // Whether the section has an entry "VALUE_..." of that name.
  bool HasValue(const CRUXSection& section, std::string_view name);

  // Whether a GROUP of that name has its header on a line with a smaller number, in any file.
  bool HasGroupAbove(std::string_view name, std::uint32_t line);

 private:
  template <class Key>
  class FirstDefinitions {
   public:
    bool has_repeat = false;
    // Sections that no key finds: the first without a text for it, the first with one, and the
    // first whose text raises an error.
    std::optional<FirstDefinition> without;
    std::optional<FirstDefinition> with;
    std::optional<FirstDefinition> raising;

    void Reserve(std::size_t count) {
      places_.Reserve(count);
      definitions_.reserve(count);
    }
    void Add(typename Key::Of key, const FirstDefinition& section) {
      if (places_.Add(0, key, static_cast<std::uint32_t>(definitions_.size()))) {
        definitions_.push_back(section);
      } else {
        has_repeat = true;
      }
    }
    const FirstDefinition* Find(typename Key::Of key) const {
      const std::uint32_t place = places_.Find(0, key);
      return place == ruxcomp::detail::kNoItem ? nullptr : &definitions_[place];
    }

   private:
    std::vector<FirstDefinition> definitions_;
    ruxcomp::detail::HashIndex<Key> places_;  // in there
  };
  using ByText = FirstDefinitions<ruxcomp::detail::TextKey>;
  using ByNumber = FirstDefinitions<ruxcomp::detail::NumberKey>;
  template <class Index>
  using PerKind = std::map<SectionId, Index>;  // each built when it is first asked
  using Names = ruxcomp::detail::HashSet<std::string_view>;

  // The numbers that a walk reads, up to the first text that raises an error.
  class Numbers {
   public:
    void Reserve(std::size_t count) { numbers_.Reserve(count); }
    // Adds a number or the number of a defined word, and ignores any other text. False when the
    // text raises an error.
    bool Add(std::string_view text, const findings::Origin& origin);
    // Whether the walk finds the number; raises the error that the walk meets before that.
    bool Has(std::uint32_t number) const;

   private:
    ruxcomp::detail::HashIndex<ruxcomp::detail::NumberKey> numbers_;
    std::optional<std::string_view> raising_;
    findings::Origin at_ = {};  // of the raising text
  };

  static void IndexNames(SectionId kind, ByText& index);
  static void IndexIds(SectionId kind, ByNumber& index);
  static void IndexEntries(SectionId kind, ByText& index);
  static void IndexIdsAndWords(SectionId kind, Numbers& index);
  static void IndexLists(SectionId kind, Numbers& index);

  PerKind<ByText> names_;
  PerKind<ByNumber> ids_;
  PerKind<ByText> entries_;
  PerKind<Numbers> ids_and_words_;
  PerKind<Numbers> listed_;
  std::optional<Names> globals_;
  std::optional<ruxcomp::detail::HashMap<std::string_view, std::uint32_t>> group_lines_;

  // Values are looked for in the section that is being checked.
  const CRUXSection* values_of_ = nullptr;
  Names values_;
};

}  // namespace ruxcomp::core

#endif  // CHECKER_MODEL_INDEX_H_
