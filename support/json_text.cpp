#include "support/json_text.h"

#include <nlohmann/json.hpp>

namespace rux::support {
namespace {

using nlohmann::json;

std::string Quoted(std::string_view text, json::error_handler_t invalid) {
  constexpr int kOneLine = -1;
  return json(text).dump(kOneLine, ' ', false, invalid);
}

}  // namespace

std::string JsonString(std::string_view text) {
  return Quoted(text, json::error_handler_t::replace);
}

bool IsUtf8(std::string_view text) try {
  Quoted(text, json::error_handler_t::strict);
  return true;
} catch (const json::type_error&) {
  return false;
}

JsonWriter& JsonWriter::Key(std::string_view key) {
  BeginValue();
  text_ += JsonString(key) + ": ";
  has_key_ = true;
  return *this;
}

JsonWriter& JsonWriter::Open(char bracket) {
  BeginValue();
  text_ += bracket;
  open_.push_back(bracket == '{' ? '}' : ']');
  is_first_ = true;
  return *this;
}

JsonWriter& JsonWriter::Close() {
  const char bracket = open_.back();
  open_.pop_back();
  if (!is_first_) BreakLine();
  text_ += bracket;
  is_first_ = false;
  return *this;
}

JsonWriter& JsonWriter::Literal(std::string_view text) {
  BeginValue();
  text_ += text;
  return *this;
}

void JsonWriter::BeginValue() {
  if (has_key_) {
    has_key_ = false;
    return;
  }
  if (!is_first_) text_ += ',';
  if (!open_.empty()) BreakLine();
  is_first_ = false;
}

void JsonWriter::BreakLine() { text_.append(1, '\n').append(2 * open_.size(), ' '); }

}  // namespace rux::support
