// The keyword of a section, the key of an entry, or the word for a type.
#ifndef FRONTEND_NAME_H_
#define FRONTEND_NAME_H_

#include <string>
#include <string_view>
#include <unordered_set>

// A large model has many entries and few different keys: each text is kept once, for all names that
// are equal. It is as large as a pointer, and comparing two compares pointers.
class Name {
 public:
  Name() = default;  // empty
  Name& operator=(const std::string& text);

  const std::string& text() const { return *text_; }
  operator const std::string&() const { return *text_; }  // NOLINT: it is a text
  const char* c_str() const { return text_->c_str(); }
  bool empty() const { return text_->empty(); }

  friend bool operator==(Name one, Name other) { return one.text_ == other.text_; }
  friend bool operator!=(Name one, Name other) { return one.text_ != other.text_; }
  friend bool operator==(Name one, std::string_view other) { return one.text() == other; }
  friend bool operator!=(Name one, std::string_view other) { return one.text() != other; }

  // An order that puts equal names side by side; no other meaning.
  static bool IsBefore(Name one, Name other) { return one.text_ < other.text_; }

  // Drops all texts. No name that is not empty may be used any more.
  static void DropTexts();

 private:
  static const std::string kEmpty;
  static std::unordered_set<std::string> m_texts;  // what Names point at, but the empty text
  const std::string* text_ = &kEmpty;
};

#endif  // FRONTEND_NAME_H_
