#include "settings/json_file.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>  // IWYU pragma: keep
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/descriptor.h"
#include "support/failure.h"
#include "support/input_file.h"
#include "support/safe_text.h"

namespace rux::settings {
namespace {

using nlohmann::json;

// Lets the parser read a text and shows how far it is.
class Reading {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  Reading(const char* at, const char** shown) : at_(at), shown_(shown) {}

  reference operator*() const { return *at_; }
  Reading& operator++() {
    *shown_ = ++at_;
    return *this;
  }
  Reading operator++(int) {
    const Reading before = *this;
    ++*this;
    return before;
  }
  bool operator==(const Reading& other) const { return at_ == other.at_; }
  bool operator!=(const Reading& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  const char** shown_;
};

// What the parser says of an error, without the place and the number of its own.
std::string_view ReasonOf(std::string_view text) {
  const std::size_t place = text.find("column ");
  const std::size_t end =
      place == std::string_view::npos ? text.find("] ") : text.find(": ", place);
  return end == std::string_view::npos ? text : text.substr(end + 2);
}

// Builds the values as the parser meets them.
class Builder {
 public:
  explicit Builder(std::string_view text) : read_(text.data()), counted_(text.data()) {}

  const char** read() { return &read_; }
  JsonValue Take() { return std::move(root_); }
  std::uint32_t line() const { return line_; }
  const std::string& trouble() const { return trouble_; }

  bool null() { return Add(JsonValue::Kind::kNull); }
  bool boolean(bool value) { return Add(JsonValue::Kind::kBoolean, value ? "true" : "false"); }
  bool number_integer(json::number_integer_t number) {
    return Add(JsonValue::Kind::kNumber, std::to_string(number));
  }
  bool number_unsigned(json::number_unsigned_t number) {
    JsonValue& added = Begin(JsonValue::Kind::kNumber);
    added.number = number;
    added.text = std::to_string(number);
    return true;
  }
  bool number_float(json::number_float_t, const std::string& written) {
    return Add(JsonValue::Kind::kNumber, written);
  }
  bool string(std::string& text) { return Add(JsonValue::Kind::kString, std::move(text)); }
  bool binary(json::binary_t&) { return false; }
  bool start_object(std::size_t) { return Open(JsonValue::Kind::kObject); }
  bool start_array(std::size_t) { return Open(JsonValue::Kind::kArray); }
  bool end_object() { return Close(); }
  bool end_array() { return Close(); }
  bool key(std::string& name) {
    CountLines();
    open_.back()->members.push_back({std::move(name), line_, {}});
    return true;
  }
  bool parse_error(std::size_t, const std::string&, const json::exception& error) {
    CountLines();
    trouble_ = support::Shortened(ReasonOf(error.what()));
    return false;
  }

 private:
  // After a number, the parser has read one more byte: a line feed belongs to the line it ends.
  void CountLines() {
    if (read_ == counted_) return;
    line_ += static_cast<std::uint32_t>(std::count(counted_, read_ - 1, '\n'));
    counted_ = read_ - 1;
  }

  // The value that comes next. Those that are open do not move: nothing is added beside them.
  JsonValue& Begin(JsonValue::Kind kind) {
    CountLines();
    JsonValue* value = &root_;
    if (!open_.empty()) {
      JsonValue& parent = *open_.back();
      value = parent.kind == JsonValue::Kind::kObject ? &parent.members.back().value
                                                      : &parent.items.emplace_back();
    }
    value->kind = kind;
    value->line = line_;
    return *value;
  }
  bool Add(JsonValue::Kind kind, std::string text = {}) {
    Begin(kind).text = std::move(text);
    return true;
  }
  bool Open(JsonValue::Kind kind) {
    open_.push_back(&Begin(kind));
    if (open_.size() <= kDeepestJson) return true;
    trouble_ = "nested more than " + std::to_string(kDeepestJson) + " levels deep";
    return false;
  }
  bool Close() {
    open_.pop_back();
    return true;
  }

  const char* read_;     // up to where the parser has read
  const char* counted_;  // up to where lines are counted
  std::uint32_t line_ = 1;
  JsonValue root_;
  std::vector<JsonValue*> open_;
  std::string trouble_;
};

}  // namespace

std::string_view NameOf(JsonValue::Kind kind) {
  constexpr std::string_view kNames[] = {"null",     "true or false", "a number",
                                         "a string", "an array",      "an object"};
  return kNames[static_cast<std::size_t>(kind)];
}

JsonValue ParseJson(const std::string& path, std::string_view text, JsonComments comments) {
  Builder builder(text);
  const char* begin = text.data();
  const char** shown = builder.read();
  if (!json::sax_parse(Reading(begin, shown), Reading(begin + text.size(), shown), &builder,
                       json::input_format_t::json, true, comments == JsonComments::kSkipped)) {
    throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: {}", path, builder.line(),
                           builder.trouble());
  }
  return builder.Take();
}

std::string ReadTextFile(const std::string& path, std::size_t largest) {
  const support::Descriptor file = support::OpenInput(path);
  std::string text;
  if (!support::ReadAll(file.number(), largest, text)) {
    throw support::SystemFailure("cannot load", path);
  }
  if (text.size() > largest) throw support::SystemFailure("cannot load", path, EFBIG);
  return text;
}

}  // namespace rux::settings
