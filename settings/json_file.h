// JSON that people write: every value has its line.
#ifndef SETTINGS_JSON_FILE_H_
#define SETTINGS_JSON_FILE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rux::settings {

struct JsonMember;

struct JsonValue {
  enum class Kind { kNull, kBoolean, kNumber, kString, kArray, kObject };

  Kind kind = Kind::kNull;
  std::uint32_t line = 0;               // on which it begins
  std::string text;                     // of a string; of a number, as it is written; "true"
  std::optional<std::uint64_t> number;  // of a whole number from 0 on
  std::vector<JsonValue> items;         // of an array
  std::vector<JsonMember> members;      // of an object, in the order of the file
};

struct JsonMember {
  std::string key;
  std::uint32_t line = 0;  // of the key
  JsonValue value;
};

// "a string", "an array"
std::string_view NameOf(JsonValue::Kind kind);

// Nesting beyond this is a mistake in any file of ours.
inline constexpr std::size_t kDeepestJson = 16;

// Some programs take comments in JSON, as C++ has them.
enum class JsonComments { kRefused, kSkipped };

// Throws a Failure that names the file at `path` and the line, when the text is not JSON or is
// nested too deeply.
JsonValue ParseJson(const std::string& path, std::string_view text,
                    JsonComments comments = JsonComments::kRefused);

// The whole file. Throws a Failure when it cannot be read or has more than `largest` bytes.
std::string ReadTextFile(const std::string& path, std::size_t largest);

}  // namespace rux::settings

#endif  // SETTINGS_JSON_FILE_H_
