// The defined words of a script, and the texts that are read as numbers or words.
#ifndef FRONTEND_DEFINED_WORDS_H_
#define FRONTEND_DEFINED_WORDS_H_

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace ruxcomp::core {

// The words that a script defines and their values. Names are compared exactly, case included, and
// are kept in byte order.
class DefinedWords {
 public:
  using Map = std::map<std::string, std::uint32_t, std::less<>>;

  // The value of a word; null for any other text.
  const std::uint32_t* Find(std::string_view text) const {
    // Most texts are numbers, and few words begin like one.
    if (!beginnings_[BeginningOf(text)]) return nullptr;
    const auto found = words_.find(text);
    return found == words_.end() ? nullptr : &found->second;
  }

  // The value of a word, which is 0 when it is new.
  std::uint32_t& operator[](std::string_view word) { return Emplace(word)->second; }

  // Adds a word; one that is there keeps its value.
  void Add(std::string_view word, std::uint32_t value) { Emplace(word, value); }

  void clear() {
    words_.clear();
    beginnings_.reset();
  }

  const Map& words() const { return words_; }

 private:
  static std::size_t BeginningOf(std::string_view text) {
    return text.empty() ? 0 : static_cast<unsigned char>(text.front());
  }
  Map::iterator Emplace(std::string_view word, std::uint32_t value = 0) {
    beginnings_.set(BeginningOf(word));
    return words_.emplace(word, value).first;
  }

  Map words_;
  std::bitset<256> beginnings_;  // the first characters of all words
};

// Filled while a script is read, emptied by CRUXSection::Destory.
extern DefinedWords g_tblPreDefine;

// Defines a word, or gives a known one another value.
void AddPredDefineValue(std::string_view name, std::uint32_t value);

// Stores the value of a defined word and answers 1; answers 0 and stores nothing for any other.
std::uint32_t GetPreDefinedValue(std::string_view name, std::uint32_t& value);

// Reads a number of the script language (ReadNumber of language/number.h). Answers 1, or 0 when the
// text is not a number; `out` is left alone only when the text is too long.
//
// Raises std::out_of_range, "basic_string::at", for an empty text and for a bare "0x": there is no
// digit to tell whether the text is a zero.
std::uint32_t StringToLong(std::string_view text, std::uint32_t& out);

// A number or a defined word, tried in this order; 1 or 0.
std::uint32_t NumberOrWord(std::string_view text, std::uint32_t& out);

// A defined word or a number, tried in this order; 1 or 0.
std::uint32_t WordOrNumber(std::string_view text, std::uint32_t& out);

}  // namespace ruxcomp::core

#endif  // FRONTEND_DEFINED_WORDS_H_
