// The words that a script defines, as the library reads it.
#ifndef INDEX_WORDS_H_
#define INDEX_WORDS_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/model/seeded_hash.h"

namespace rux::index {

// Whether the library takes an item of a DEFINE or IFDEF section as a definition.
inline bool DefinesWord(const ruxcomp::reader::Item& item) {
  return !item.value.empty() && (item.key.front() < '0' || item.key.front() > '9');
}

// Words by their names, each with what its last definition gave it. `Origin` is where that is.
template <class Origin>
class Words {
 public:
  struct Word {
    std::uint32_t value;
    Origin origin;
  };

  // Null for what is no word.
  const Word* FindWord(std::string_view text) const {
    const auto found = words_.find(text);
    return found == words_.end() ? nullptr : &found->second;
  }
  std::optional<std::uint32_t> Find(std::string_view text) const {
    const Word* word = FindWord(text);
    return word == nullptr ? std::nullopt : std::make_optional(word->value);
  }

  // The number that a text stands for: in entries, where words come first, and in operands and
  // references, where numbers do.
  std::optional<std::uint32_t> WordOrNumber(std::string_view text) const {
    const auto word = Find(text);
    return word ? word : NumberOf(text);
  }
  std::optional<std::uint32_t> NumberOrWord(std::string_view text) const {
    const auto number = NumberOf(text);
    return number ? number : Find(text);
  }

  // Answers the word that was there before.
  std::optional<Word> Define(std::string_view name, const Word& word) {
    const auto [place, is_new] = words_.try_emplace(name, word);
    if (is_new) return std::nullopt;
    const Word before = place->second;
    place->second = word;
    return before;
  }

 private:
  static std::optional<std::uint32_t> NumberOf(std::string_view text) {
    const ruxcomp::language::Number number = ruxcomp::language::ReadNumber(text);
    return number.is_number ? std::make_optional(number.value) : std::nullopt;
  }

  ruxcomp::detail::HashMap<std::string_view, Word> words_;
};

}  // namespace rux::index

#endif  // INDEX_WORDS_H_
