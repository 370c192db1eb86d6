// Writing JSON piece by piece.
#ifndef SUPPORT_JSON_TEXT_H_
#define SUPPORT_JSON_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace rux::support {

// The text as a JSON string, quotes included. Bytes that are no UTF-8 become U+FFFD.
std::string JsonString(std::string_view text);

bool IsUtf8(std::string_view text);

// Builds one document, indented. Values go into the list or the object that was opened last; in an
// object, each value has a key before it. The caller closes what it opens.
class JsonWriter {
 public:
  JsonWriter& Key(std::string_view key);
  JsonWriter& String(std::string_view text) { return Literal(JsonString(text)); }
  JsonWriter& Number(std::size_t number) { return Literal(std::to_string(number)); }
  JsonWriter& Bool(bool value) { return Literal(value ? "true" : "false"); }
  JsonWriter& Null() { return Literal("null"); }
  JsonWriter& Open(char bracket);  // '{' or '['
  JsonWriter& Close();

  // The document, with a line feed.
  std::string TakeText() { return text_ + '\n'; }

 private:
  JsonWriter& Literal(std::string_view text);
  void BeginValue();
  void BreakLine();

  std::string text_;
  std::vector<char> open_;  // the brackets that will close what is open
  bool is_first_ = true;    // in what was opened last
  bool has_key_ = false;
};

}  // namespace rux::support

#endif  // SUPPORT_JSON_TEXT_H_
