// The keyword of a section, the key of an entry, or the word for a type.
#ifndef FRONTEND_INTERNED_STRING_H_
#define FRONTEND_INTERNED_STRING_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frontend/text.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/model/seeded_hash.h"

namespace ruxcomp::core {

// A large model has many entries and few different keys: equal names share one text. A name is as
// large as a pointer, and comparing two names compares pointers.
class InternedString {
 public:
  InternedString() = default;  // empty
  explicit InternedString(std::string_view text);
  InternedString& operator=(std::string_view text) { return *this = InternedString(text); }

  // The keyword of an entry, without looking the text up.
  static InternedString OfKeyword(const ruxcomp::language::EntryRow& row);

  Text text() const { return *text_; }
  operator std::string_view() const { return *text_; }  // NOLINT: it is a text
  const char* c_str() const { return text_->c_str(); }
  bool empty() const { return text_->empty(); }

  friend bool operator==(InternedString one, InternedString other) {
    return one.text_ == other.text_;
  }
  friend bool operator!=(InternedString one, InternedString other) {
    return one.text_ != other.text_;
  }
  friend bool operator==(InternedString one, std::string_view other) { return one.text() == other; }
  friend bool operator!=(InternedString one, std::string_view other) { return one.text() != other; }

  // Equal names have equal hashes.
  std::size_t Hash() const {
    return static_cast<std::size_t>(
        ruxcomp::detail::Mixed(reinterpret_cast<std::uintptr_t>(text_)));
  }

  // An order that puts equal names side by side and means nothing else.
  static bool IsBefore(InternedString one, InternedString other) { return one.text_ < other.text_; }

  // Forgets all texts. Only empty names may be used afterwards.
  static void DropTexts();

 private:
  static const Text kEmpty;
  // The texts that names point to, except the empty one; in the arena of the model.
  static ruxcomp::detail::HashMap<std::string_view, const Text*> m_texts;
  // Those of keywords, row by row; null until a name is made of the row.
  static std::array<const Text*, ruxcomp::language::kEntryCount> m_keywords;
  const Text* text_ = &kEmpty;
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_INTERNED_STRING_H_
