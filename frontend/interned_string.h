// The keyword of a section, the key of an entry, or the word for a type.
#ifndef FRONTEND_INTERNED_STRING_H_
#define FRONTEND_INTERNED_STRING_H_

#include <string>
#include <string_view>

#include "ruxcomp/model/seeded_hash.h"

namespace ruxcomp::core {

// A large model has many entries and few different keys: each text is kept once, for all names that
// are equal. It is as large as a pointer, and comparing two compares pointers.
class InternedString {
 public:
  InternedString() = default;  // empty
  InternedString& operator=(const std::string& text);

  const std::string& text() const { return *text_; }
  operator const std::string&() const { return *text_; }  // NOLINT: it is a text
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

  // An order that puts equal names side by side; no other meaning.
  static bool IsBefore(InternedString one, InternedString other) { return one.text_ < other.text_; }

  // Drops all texts. No name that is not empty may be used any more.
  static void DropTexts();

 private:
  static const std::string kEmpty;
  static ruxcomp::detail::HashSet<std::string> m_texts;  // what names point at, but the empty text
  const std::string* text_ = &kEmpty;
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_INTERNED_STRING_H_
