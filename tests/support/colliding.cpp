#include "tests/support/colliding.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <unordered_set>

namespace {

constexpr std::size_t kWord = 8;

// The hash takes a text in words: hash = (hash ^ Spread(word)) * kFactor. All steps can be undone,
// so that a last word can be found which leads to any hash.
constexpr std::uint64_t kFactor = 0xC6A4A7935BD1E995;

std::uint64_t Inverse(std::uint64_t odd) {
  std::uint64_t inverse = odd;  // right in three bits; every step doubles them
  for (int step = 0; step < 5; ++step) inverse *= 2 - odd * inverse;
  return inverse;
}

std::uint64_t Folded(std::uint64_t word) { return word ^ word >> 47; }  // twice: the word itself
std::uint64_t Spread(std::uint64_t word) { return Folded(word * kFactor) * kFactor; }
std::uint64_t Unspread(std::uint64_t word) {
  const std::uint64_t inverse = Inverse(kFactor);
  return Folded(word * inverse) * inverse;
}

std::uint64_t WordOf(const std::string& text) {
  std::uint64_t word;
  std::memcpy(&word, text.data(), sizeof word);
  return word;
}

bool CanBeInNames(unsigned char c) {
  return c >= 0x80 || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         c == '_';
}

// "Naaaaaab" and so on: eight letters, a different text for each ordinal.
std::string FirstWord(std::size_t ordinal) {
  std::string text(kWord, 'N');
  for (std::size_t i = kWord; i-- > 1; ordinal /= 26) {
    text[i] = static_cast<char>('a' + static_cast<char>(ordinal % 26));
  }
  return text;
}

// The text of sixteen characters that begins with a word and has the hash of "NNN...".
std::string WithCommonHash(const std::string& first) {
  constexpr std::uint64_t start = 0xC70F6907 ^ 2 * kWord * kFactor;
  const auto after = [](const std::string& word) {
    return (start ^ Spread(WordOf(word))) * kFactor;
  };
  const std::string common(kWord, 'N');
  const std::uint64_t wanted = after(common) ^ Spread(WordOf(common));
  const std::uint64_t last = Unspread(wanted ^ after(first));
  std::string text = first + std::string(kWord, ' ');
  std::memcpy(text.data() + kWord, &last, sizeof last);
  return text;
}

}  // namespace

std::vector<std::string> CollidingTexts(std::size_t count) {
  std::vector<std::string> texts;
  for (std::size_t ordinal = 0; texts.size() < count; ++ordinal) {
    const std::string text = WithCommonHash(FirstWord(ordinal));
    if (!std::all_of(text.begin(), text.end(), CanBeInNames)) continue;
    texts.push_back(text);
    const std::hash<std::string> hash;
    if (hash(text) != hash(texts.front())) return {};
  }
  return texts;
}

std::vector<std::string> DifferentTexts(std::size_t count) {
  std::vector<std::string> texts;
  texts.reserve(count);
  for (std::size_t ordinal = 0; ordinal < count; ++ordinal) {
    texts.push_back(FirstWord(ordinal) + FirstWord(count - ordinal));
  }
  return texts;
}

std::vector<std::uint32_t> CollidingNumbers(std::size_t count) {
  std::unordered_set<std::uint32_t> table;
  table.reserve(count);
  std::vector<std::uint32_t> numbers;
  numbers.reserve(count);
  for (std::size_t i = 1; i <= count; ++i) {
    numbers.push_back(static_cast<std::uint32_t>(i * table.bucket_count()));
  }
  return numbers;
}
