#include "tool/diagnostics/locator.h"

#include <algorithm>

#include "ruxcomp/data.h"
#include "tool/compile/script_path.h"

namespace rux {
namespace {

bool IsKnownSection(std::string_view name) {
  return std::any_of(g_NTMapSect, g_NTMapSect + g_dwNTMSect,
                     [&](const tagNTMAP& row) { return name == row.keyword; });
}

bool HasKey(const reader::Section& section, std::string_view key) {
  // Only the first item of an IFDEF section is its condition.
  const std::uint32_t count =
      section.name == "IFDEF" ? std::min(section.item_count, 1u) : section.item_count;
  return std::any_of(section.items, section.items + count,
                     [&](const reader::Item& item) { return item.key == key; });
}

// How well what stands on the line fits what a message says of it.
int Likeness(const std::optional<SourceSpot>& spot, const Diagnostic& diagnostic) {
  if (!spot) return 0;
  int likeness = 1;
  if (diagnostic.section && spot->section->name == *diagnostic.section) ++likeness;
  if (diagnostic.entry && spot->item != nullptr && spot->item->key == *diagnostic.entry) ++likeness;
  return likeness;
}

}  // namespace

void Locator::Locate(Diagnostic& diagnostic) {
  for (Note& note : diagnostic.notes) {
    if (note.at.source == nullptr) continue;
    note.at = LocationOf(*note.at.source, note.at.first_line, diagnostic.arguments);
  }
  if (diagnostic.anchor == Anchor::kNone) {
    // Notes are about the run.
    if (diagnostic.severity != Severity::kNote) diagnostic.at.path = ToOpenablePath(script_);
    return;
  }
  const std::optional<SourcePlace> place = Find(diagnostic);
  if (!place) {
    // Also when the source cannot be read again, the message says where to look.
    const bool is_script = diagnostic.file.empty() || diagnostic.file == BaseNameOf(script_);
    diagnostic.at.path = is_script ? ToOpenablePath(script_) : diagnostic.file;
    diagnostic.at.first_line = diagnostic.line;
    return;
  }
  diagnostic.at = LocationOf(*place->file, place->line, diagnostic.arguments);
  diagnostic.included_from = IncludesOf(*place->file);
}

Location Locator::LocationOf(const SourceFile& file, std::uint32_t line,
                             const std::vector<Argument>& mentioned) {
  Location location{file.path(), line, std::nullopt, &file};
  if (file.Line(line).empty()) return location;
  if (!line_ || !line_->Is(file, line)) line_.emplace(file, line);
  location.excerpt = line_->Underline(mentioned);
  return location;
}

std::vector<Note> Locator::IncludesOf(const SourceFile& file) {
  // Nobody reads more of them.
  constexpr std::size_t kMost = 10;
  std::vector<Note> includes;
  for (const SourcePlace* place = sources().IncludedAt(file); place != nullptr;
       place = sources().IncludedAt(*place->file)) {
    if (includes.size() == kMost) {
      includes.push_back({"and so on", {}});
      break;
    }
    includes.push_back(
        {"included from here", {place->file->path(), place->line, std::nullopt, nullptr}});
  }
  return includes;
}

const SourceView& Locator::sources() {
  if (!sources_) sources_.emplace(script_, read_from_);
  return *sources_;
}

std::optional<SourcePlace> Locator::Find(const Diagnostic& diagnostic) {
  const Location& known = diagnostic.at;
  if (known.source != nullptr) return SourcePlace{known.source, known.first_line};
  if (diagnostic.anchor == Anchor::kUnknownSection) return TakeNext(UnknownSections());
  if (diagnostic.anchor == Anchor::kMissingEntry) {
    return TakeNext(SectionsWithout(*diagnostic.section, *diagnostic.entry));
  }
  const SourceFile* file = FileOf(diagnostic);
  if (file == nullptr) return std::nullopt;
  return SourcePlace{file, diagnostic.line};
}

const SourceFile* Locator::FileOf(const Diagnostic& diagnostic) {
  const SourceFile* best = nullptr;
  int best_likeness = -1;
  for (const SourceFile* file : sources().FilesNamed(diagnostic.file)) {
    const int likeness = Likeness(file->At(diagnostic.line), diagnostic);
    if (likeness <= best_likeness) continue;
    best = file;
    best_likeness = likeness;
  }
  return best;
}

std::optional<SourcePlace> Locator::TakeNext(Queue& queue) {
  if (queue.next == queue.sections.size()) return std::nullopt;
  const SourceSection& taken = queue.sections[queue.next++];
  return SourcePlace{taken.file, taken.section->line};
}

Locator::Queue& Locator::UnknownSections() {
  if (!unknown_sections_) {
    unknown_sections_ = std::make_unique<Queue>();
    for (const SourceSection& candidate : sources().sections()) {
      if (!IsKnownSection(candidate.section->name)) {
        unknown_sections_->sections.push_back(candidate);
      }
    }
  }
  return *unknown_sections_;
}

Locator::Queue& Locator::SectionsWithout(const std::string& section, const std::string& entry) {
  const auto [place, is_new] = sections_without_.try_emplace({section, entry});
  if (is_new) {
    for (const SourceSection& candidate : sources().sections()) {
      if (candidate.section->name == section && !HasKey(*candidate.section, entry)) {
        place->second.sections.push_back(candidate);
      }
    }
  }
  return place->second;
}

}  // namespace rux
