// The other place that a message is about.
#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "diagnostics/advice.h"
#include "sources/script_names.h"

namespace rux::diagnostics {
namespace {

void AddNote(Locator& locator, Diagnostic& diagnostic, std::string text,
             const sources::SourceFile& file, std::uint32_t line) {
  diagnostic.notes.push_back(
      {std::move(text), locator.LocationOf(file, line, {diagnostic.arguments})});
}

// The library tells the place itself, by base name and line, as the last two arguments.
void AddToldPlace(Locator& locator, Diagnostic& diagnostic) {
  const std::vector<Argument>& arguments = diagnostic.arguments;
  if (arguments.size() < 2) return;
  Diagnostic other;
  other.section = diagnostic.section;
  other.file = std::get<std::string>(arguments[arguments.size() - 2]);
  other.line = std::get<std::uint32_t>(arguments.back());
  const sources::SourceFile* file = locator.FileOf(other);
  if (file == nullptr) return;
  const bool is_same = file == diagnostic.at.source && other.line == diagnostic.line;
  const sources::SourcePlace* again = is_same ? locator.sources().IncludedAgainAt(*file) : nullptr;
  if (again != nullptr) {
    AddNote(locator, diagnostic, "the file is included here again", *again->file, again->line);
  } else {
    AddNote(locator, diagnostic, "first defined here", *file, other.line);
  }
}

void AddFirstOfSection(Locator& locator, Diagnostic& diagnostic) {
  const sources::SourceFile* file = locator.FileOf(diagnostic);
  const std::optional<sources::SourceSpot> spot =
      file == nullptr ? std::nullopt : file->At(diagnostic.line);
  if (!spot || spot->item == nullptr) return;
  const reader::Item* first =
      std::find_if(spot->section->items, spot->item,
                   [&](const reader::Item& item) { return item.key == spot->item->key; });
  if (first != spot->item) {
    AddNote(locator, diagnostic, "first defined here", *file, first->line);
  }
}

void AddFirstSection(Locator& locator, Diagnostic& diagnostic) {
  const sources::SourceFile* here = locator.FileOf(diagnostic);
  const std::string& name = *FirstMentioned(diagnostic);
  for (const sources::SourceSection& section : locator.sources().sections()) {
    if (section.section->name != name) continue;
    const bool is_first = section.file == here && section.section->line == diagnostic.line;
    if (!is_first) {
      AddNote(locator, diagnostic, "first defined here", *section.file, section.section->line);
    }
    return;
  }
}

void AddParentGroup(Locator& locator, Diagnostic& diagnostic) {
  const sources::SourceFile* file = locator.FileOf(diagnostic);
  const std::optional<sources::SourceSpot> spot =
      file == nullptr ? std::nullopt : file->At(diagnostic.line);
  if (!spot) return;
  const reader::Item* end = spot->section->items + spot->section->item_count;
  const reader::Item* parent = std::find_if(
      spot->section->items, end, [](const reader::Item& item) { return item.key == "PARENT"; });
  if (parent == end) return;
  const auto found = sources::FindItem(locator.sources(), "GROUP", "NAME", parent->value);
  if (!found) return;
  AddNote(locator, diagnostic,
          "the parent begins here; its line number must be smaller, also in another file",
          *found->file, found->section->line);
}

void AddAction(Locator& locator, Diagnostic& diagnostic) {
  const std::string* name = FirstMentioned(diagnostic);
  if (name == nullptr) return;
  const auto action = sources::FindItem(locator.sources(), "ACTION", "NAME", *name);
  if (action) AddNote(locator, diagnostic, "defined here", *action->file, action->item->line);
}

}  // namespace

void AddOtherPlace(Locator& locator, Diagnostic& diagnostic) {
  switch (diagnostic.id) {
    case MessageId::kRedefinedElsewhere:
    case MessageId::kRedefinedName:
    case MessageId::kRedefinedId:
      return AddToldPlace(locator, diagnostic);
    case MessageId::kRedefinedEntry:
      return AddFirstOfSection(locator, diagnostic);
    case MessageId::kRedefinedSection:
      return AddFirstSection(locator, diagnostic);
    case MessageId::kParentDefinedLater:
      return AddParentGroup(locator, diagnostic);
    case MessageId::kArgumentCount:
      return AddAction(locator, diagnostic);
    default:
      return;
  }
}

}  // namespace rux::diagnostics
