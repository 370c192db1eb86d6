#include "assistance/wording.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "assistance/place.h"
#include "index/index.h"
#include "index/records.h"
#include "rules/wording.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::assistance {
namespace {

std::string ReferenceText(const language::Reference& row) {
  std::string text = fmt::format("; the `{}` of a `[{}]`", language::KeywordOf(row.key),
                                 language::KindOf(row.target).keyword);
  if (row.unless != language::RefersUnless::kNever) text += ", or 0";
  return text;
}

}  // namespace

std::string Code(std::string_view text) {
  if (text.find('`') == std::string_view::npos) return fmt::format("`{}`", text);
  return fmt::format("`` {} ``", text);
}

std::string CodeBlock(std::string_view lines) {
  // No line of a script begins a fence of its own that is as long.
  return fmt::format("~~~~~~rux\n{}\n~~~~~~", lines);
}

std::string PayloadText(const language::EntryRow& row) {
  switch (row.payload) {
    case language::EntryPayload::kDword:
    case language::EntryPayload::kNumberText:
      return "a number or a word";
    case language::EntryPayload::kText:
      return "a text";
    case language::EntryPayload::kNumberList:
      return "numbers or words";
    case language::EntryPayload::kValue:
      return "a value";
    case language::EntryPayload::kRepeater:
      return "a count, an action and its arguments";
  }
  return "";
}

std::string KeyText(const language::SectionKind& kind, std::uint32_t entry,
                    language::Notation notation) {
  std::string text = (notation & language::kRequired) != 0 ? "required, " : "optional, ";
  text += PayloadText(*language::FindEntryRow(entry));
  const language::Reference* reference = language::FindReference(kind.source, entry);
  return reference == nullptr ? text : text + ReferenceText(*reference);
}

std::string RoleText(language::Role role, bool is_list) {
  const char* text = "";
  switch (role) {
    case language::Role::kNone:
      break;
    case language::Role::kOperand:
      text = "operand";
      break;
    case language::Role::kNumber:
    case language::Role::kRepeatCount:
      text = "number";
      break;
    case language::Role::kLocalValue:
      text = "value";
      break;
    case language::Role::kAction:
      text = "action";
      break;
    case language::Role::kTable:
      text = "table";
      break;
    case language::Role::kOperator:
      text = "operator";
      break;
    case language::Role::kRepeatArgument:
      text = "argument";
      break;
  }
  return is_list ? fmt::format("{}s ...", text) : text;
}

std::string PartText(const language::ValueType& type, std::size_t field) {
  const language::Field& row = type.fields[field];
  const std::string name = rules::InWords(row.name);
  const std::string role = RoleText(type.roles[field], row.kind == language::FieldKind::kList);
  return name == role ? name : fmt::format("{} ({})", name, role);
}

std::string_view NameOf(const index::Index& index, Id section) {
  return index.TextOf(section, language::ENTRY_NAME);
}

std::string TitleOf(const index::Index& index, const index::Definition& definition) {
  if (definition.section == kNone) return index.files()[definition.file]->path();
  const index::SectionRecord& section = index.sections()[definition.section];
  const std::uint32_t entry = index.items()[definition.item].entry;
  const bool is_of_section = entry == language::ENTRY_NAME || entry == language::ENTRY_ID ||
                             entry == language::ENTRY_ARGNUMBER;
  const std::string_view name =
      is_of_section ? NameOf(index, definition.section) : index.items()[definition.item].item->key;
  return fmt::format("[{}] {}", section.kind->keyword, name);
}

}  // namespace rux::assistance
