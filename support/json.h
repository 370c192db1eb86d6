// Writing JSON: objects and lists are written by functions that get them, so none stays open.
//
//   JsonDocument([&](JsonObject& json) {
//     json.Member("file", path);
//     json.Array("counts", [&](JsonArray& counts) { counts.Item(3); });
//   });
#ifndef SUPPORT_JSON_H_
#define SUPPORT_JSON_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "support/text_stream.h"

namespace rux::support {

// The text as a JSON string, quotes included. Bytes that are no UTF-8 become U+FFFD; what could
// steer a terminal or hide there (IsSafe()) is escaped.
std::string JsonString(std::string_view text);

// A number as it is written, such as "1.05".
struct JsonNumber {
  std::string_view text;
};

// The values of an object or a list: each on a line of its own, further to the right than what it
// is in.
class JsonScope {
 public:
  JsonScope(TextStream& text, std::size_t depth) : text_(text), depth_(depth) {}
  JsonScope(const JsonScope&) = delete;
  JsonScope& operator=(const JsonScope&) = delete;

  bool is_empty() const { return is_empty_; }

 protected:
  // Null, a bool, a number or a text.
  template <class Value>
  void Write(const Value& value) {
    if constexpr (std::is_same_v<Value, std::nullptr_t>) {
      text_ += "null";
    } else if constexpr (std::is_same_v<Value, bool>) {
      text_ += value ? "true" : "false";
    } else if constexpr (std::is_same_v<Value, JsonNumber>) {
      text_ += value.text;
    } else if constexpr (std::is_arithmetic_v<Value>) {
      text_ += std::to_string(value);
    } else {
      text_ += JsonString(value);
    }
  }

  template <class Scope, class Fill>
  void Nest(Fill fill);

  void BeginValue();
  // Values that were written with all that belongs before them, but for a comma.
  void AddValues(std::string_view written);

  TextStream& text_;

 private:
  const std::size_t depth_;
  bool is_empty_ = true;
};

class JsonArray;

class JsonObject : public JsonScope {
 public:
  static constexpr char kBrackets[] = "{}";
  using JsonScope::JsonScope;

  template <class Value>
  void Member(std::string_view key, const Value& value) {
    BeginMember(key);
    Write(value);
  }

  // The member "schema": of what version the document is. To be raised when a member changes its
  // meaning or is removed.
  void Schema(std::uint32_t version) { Member("schema", version); }

  // fill(JsonObject&)
  template <class Fill>
  void Object(std::string_view key, Fill fill) {
    BeginMember(key);
    Nest<JsonObject>(fill);
  }

  // fill(JsonArray&)
  template <class Fill>
  void Array(std::string_view key, Fill fill);

  // A list with an object for each thing of a range: fill(JsonObject&, thing).
  template <class Range, class Fill>
  void Objects(std::string_view key, const Range& range, Fill fill);

 private:
  void BeginMember(std::string_view key);
};

class JsonArray : public JsonScope {
 public:
  static constexpr char kBrackets[] = "[]";
  using JsonScope::JsonScope;

  template <class Value>
  void Item(const Value& value) {
    BeginValue();
    Write(value);
  }

  template <class Range>
  void Items(const Range& range) {
    for (const auto& value : range) Item(value);
  }

  template <class Fill>
  void Object(Fill fill) {
    BeginValue();
    Nest<JsonObject>(fill);
  }

  // What another list of the same depth has written.
  void AddWritten(std::string_view items) { AddValues(items); }
};

// Writes the object that fill(JsonObject&) fills, with a line feed.
template <class Fill>
void WriteJson(TextStream& text, Fill fill);

// The same as a text.
template <class Fill>
std::string JsonDocument(Fill fill);

// Implementation.

void BreakJsonLine(TextStream& text, std::size_t depth);

template <class Scope, class Fill>
void AppendJson(TextStream& text, std::size_t depth, Fill fill) {
  text += Scope::kBrackets[0];
  Scope scope(text, depth + 1);
  fill(scope);
  if (!scope.is_empty()) BreakJsonLine(text, depth);
  text += Scope::kBrackets[1];
}

template <class Scope, class Fill>
void JsonScope::Nest(Fill fill) {
  AppendJson<Scope>(text_, depth_, fill);
}

template <class Fill>
void JsonObject::Array(std::string_view key, Fill fill) {
  BeginMember(key);
  Nest<JsonArray>(fill);
}

template <class Range, class Fill>
void JsonObject::Objects(std::string_view key, const Range& range, Fill fill) {
  Array(key, [&](JsonArray& list) {
    for (const auto& thing : range) {
      list.Object([&](JsonObject& json) { fill(json, thing); });
    }
  });
}

template <class Fill>
void WriteJson(TextStream& text, Fill fill) {
  AppendJson<JsonObject>(text, 0, fill);
  text += '\n';
}

template <class Fill>
std::string JsonDocument(Fill fill) {
  return WrittenText([&](TextStream& text) { WriteJson(text, fill); });
}

}  // namespace rux::support

#endif  // SUPPORT_JSON_H_
