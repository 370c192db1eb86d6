#include "rules/script_item.h"

namespace rux::rules {
namespace {

std::vector<KindKeys> AllKeys() {
  std::vector<KindKeys> all;
  for (std::uint32_t kind = 1; const compiled::SectionSchema* schema = compiled::FindSchema(kind);
       ++kind) {
    KindKeys& keys = all.emplace_back(KindKeys{schema, {}});
    for (const compiled::SchemaKey& key : schema->keys) {
      keys.keys.emplace_back(compiled::SourceEntryKeyword(key.identifier), key.identifier);
    }
  }
  return all;
}

}  // namespace

ScriptItem SeenItem::Shown() const {
  static const std::vector<std::string_view> no_parts;
  return {file, section, item, kind, key, no_parts};
}

const KindKeys* FindKeysOf(std::string_view section) {
  static const std::vector<KindKeys> all = AllKeys();
  for (const KindKeys& kind : all) {
    if (section == kind.schema->keyword) return &kind;
  }
  return nullptr;
}

std::uint32_t KeyOf(const KindKeys& kind, std::string_view key, std::uint32_t index) {
  const compiled::SectionSchema& schema = *kind.schema;
  // What follows the condition of an IFDEF are words, whatever they are called.
  if (schema.kind != compiled::kKindIFDEF || index == 0) {
    for (const auto& [name, identifier] : kind.keys) {
      // Told apart by their ends in most cases.
      if (key.size() == name.size() && key.back() == name.back() && key == name) return identifier;
    }
    if (schema.kind == compiled::kKindIFDEF) return 0;
  }
  if (schema.more.empty()) return 0;
  const bool is_property = key.substr(0, 2) == "P_";
  return is_property ? schema.more.front().identifier : schema.more.back().identifier;
}

}  // namespace rux::rules
