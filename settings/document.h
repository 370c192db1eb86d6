// A file of settings whose values are as its schema says, or refused with the line that is not.
#ifndef SETTINGS_DOCUMENT_H_
#define SETTINGS_DOCUMENT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/json_file.h"

namespace rux::settings {

// A member that an object takes.
struct Key {
  std::string_view name;
  JsonValue::Kind kind;
};

// Every problem is a Failure that names the file and the line.
class Document {
 public:
  Document(std::string path, std::string_view text);

  const std::string& path() const { return path_; }
  const JsonValue& root() const { return root_; }

  [[noreturn]] void Refuse(std::uint32_t line, const std::string& text) const;
  void Expect(const JsonValue& value, JsonValue::Kind kind, std::string_view what) const;

  // The values of the object's members by their place among the keys; null for those that it does
  // not have. It has no others, and none twice.
  template <std::size_t kSize>
  std::vector<const JsonValue*> Members(const JsonValue& object, const Key (&keys)[kSize]) const {
    return Members(object, keys, kSize);
  }

  // The texts of an array of strings, each with its line.
  using Strings = std::vector<std::pair<std::string, std::uint32_t>>;
  Strings StringsOf(const JsonValue* array, std::string_view what) const;

 private:
  std::vector<const JsonValue*> Members(const JsonValue& object, const Key* keys,
                                        std::size_t count) const;
  [[noreturn]] void RefuseKey(const JsonMember& member, const Key* keys, std::size_t count) const;

  const std::string path_;
  const JsonValue root_;
};

}  // namespace rux::settings

#endif  // SETTINGS_DOCUMENT_H_
