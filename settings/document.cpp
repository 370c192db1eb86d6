#include "settings/document.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/json_file.h"
#include "support/failure.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::settings {

Document::Document(std::string path, std::string_view text)
    : path_(std::move(path)), root_(ParseJson(path_, text)) {
  Expect(root_, JsonValue::Kind::kObject, "the file");
}

void Document::Refuse(std::uint32_t line, const std::string& text) const {
  throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: {}", path_, line, text);
}

void Document::Expect(const JsonValue& value, JsonValue::Kind kind, std::string_view what) const {
  if (value.kind == kind) return;
  Refuse(value.line,
         fmt::format("{} must be {}, found {}", what, NameOf(kind), NameOf(value.kind)));
}

std::vector<const JsonValue*> Document::Members(const JsonValue& object, const Key* keys,
                                                std::size_t count) const {
  std::vector<const JsonValue*> values(count);
  for (const JsonMember& member : object.members) {
    const Key* key =
        std::find_if(keys, keys + count, [&](const Key& each) { return each.name == member.key; });
    if (key == keys + count) RefuseKey(member, keys, count);
    const JsonValue*& value = values[static_cast<std::size_t>(key - keys)];
    if (value != nullptr) {
      Refuse(member.line,
             fmt::format("{} is given twice, first on line {}", key->name, value->line));
    }
    Expect(member.value, key->kind, key->name);
    value = &member.value;
  }
  return values;
}

Document::Strings Document::StringsOf(const JsonValue* array, std::string_view what) const {
  Strings strings;
  if (array == nullptr) return strings;
  for (const JsonValue& item : array->items) {
    Expect(item, JsonValue::Kind::kString, what);
    if (item.text.empty()) {
      Refuse(item.line, fmt::format("expected {}, found an empty string", what));
    }
    strings.emplace_back(item.text, item.line);
  }
  return strings;
}

void Document::RefuseKey(const JsonMember& member, const Key* keys, std::size_t count) const {
  std::vector<std::string> names;
  for (const Key* key = keys; key != keys + count; ++key) names.emplace_back(key->name);
  const std::string name = support::Shortened(member.key);
  Refuse(member.line, "no such key: " + support::NameText(name) + support::NearText(name, names));
}

}  // namespace rux::settings
