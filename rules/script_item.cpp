#include "rules/script_item.h"

namespace rux::rules {
namespace {

std::vector<KindKeys> AllKeys() {
  std::vector<KindKeys> all;
  for (const language::SectionKind& kind : language::kSectionKinds) {
    KindKeys& keys = all.emplace_back(KindKeys{&kind, {}});
    for (const language::EntryTemplate& key : kind.templates) {
      keys.keys.emplace_back(language::FindEntryRow(key.identifier)->keyword, key.identifier);
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
  const language::SectionKind& schema = *kind.schema;
  // What follows the condition of an IFDEF are words, whatever they are called.
  if (schema.source != language::SECTION_IFDEF || index == 0) {
    for (const auto& [name, identifier] : kind.keys) {
      // Told apart by their ends in most cases.
      if (key.size() == name.size() && key.back() == name.back() && key == name) return identifier;
    }
    if (schema.source == language::SECTION_IFDEF) return 0;
  }
  const language::Rows<language::FreeEntryRule> more = schema.free_entries;
  if (more.empty()) return 0;
  const bool is_property = key.substr(0, 2) == "P_";
  return is_property ? more[0].identifier : more[more.size() - 1].identifier;
}

}  // namespace rux::rules
