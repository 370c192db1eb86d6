#include "diagnostics/locator.h"

#include <algorithm>

#include "ruxcomp/data.h"
#include "sources/script_path.h"

namespace rux::diagnostics {
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
int Likeness(const std::optional<sources::SourceSpot>& spot, const Diagnostic& diagnostic) {
  if (!spot) return 0;
  int likeness = 1;
  if (diagnostic.section && spot->section->name == *diagnostic.section) ++likeness;
  if (diagnostic.entry && spot->item != nullptr && spot->item->key == *diagnostic.entry) ++likeness;
  return likeness;
}

Focus FocusOf(MessageId id) {
  switch (id) {
    case MessageId::kSurplusValues:
      return Focus::kLaterParts;
    case MessageId::kSmbusBusType:
      return Focus::kBusType;
    case MessageId::kSmbusAddress:
      return Focus::kBaseAddress;
    case MessageId::kTextAfterHeader:
      return Focus::kBehindHeader;
    case MessageId::kUnclosedQuote:
      return Focus::kOpenQuote;
    case MessageId::kNulByte:
      return Focus::kZeroByte;
    default:
      return Focus::kMentioned;
  }
}

}  // namespace

void Locator::Locate(Diagnostic& diagnostic) {
  for (Note& note : diagnostic.notes) {
    if (note.at.source == nullptr) continue;
    note.at =
        LocationOf(*note.at.source, note.at.first_line, {diagnostic.arguments, note.at.value_at});
  }
  if (diagnostic.anchor == Anchor::kNone) {
    // Notes are about the run.
    if (diagnostic.severity != Severity::kNote)
      diagnostic.at.path = sources::ToOpenablePath(script_);
    return;
  }
  const std::optional<sources::SourcePlace> place = Find(diagnostic);
  if (!place) {
    // Also when the source cannot be read again, the message says where to look.
    const bool is_script =
        diagnostic.file.empty() || diagnostic.file == sources::BaseNameOf(script_);
    diagnostic.at.path = is_script ? sources::ToOpenablePath(script_) : diagnostic.file;
    diagnostic.at.first_line = diagnostic.line;
    return;
  }
  diagnostic.at = LocationOf(*place->file, place->line,
                             {diagnostic.arguments, diagnostic.at.value_at,
                              CountAlike(diagnostic, *place), FocusOf(diagnostic.id)});
  diagnostic.included_from = IncludesOf(*place->file);
}

Location Locator::LocationOf(const sources::SourceFile& file, std::uint32_t line,
                             const Meant& meant) {
  Location location{file.path(), line, std::nullopt, &file, std::nullopt};
  if (!file.Line(line).empty()) location.excerpt = LineOf(file, line).Underline(meant);
  return location;
}

// Long ones are kept: diagnostics may be about several of them in turns.
SourceLine& Locator::LineOf(const sources::SourceFile& file, std::uint32_t line) {
  constexpr std::size_t kLong = 1000;
  if (line_ && line_->Is(file, line)) return *line_;
  const auto known = long_lines_.find({&file, line});
  if (known != long_lines_.end()) return *known->second;
  auto found = std::make_unique<SourceLine>(file, line);
  std::unique_ptr<SourceLine>& kept = found->size() < kLong ? line_ : long_lines_[{&file, line}];
  kept = std::move(found);
  return *kept;
}

// How many of the diagnostics before it say the same of its line. The library tells of the parts
// of a value in their order, but not which one it means.
std::size_t Locator::CountAlike(const Diagnostic& diagnostic, const sources::SourcePlace& place) {
  const bool is_last =
      last_place_ && last_place_->file == place.file && last_place_->line == place.line;
  if (!is_last) alike_.clear();
  last_place_ = place;
  const std::string* text = FirstMentioned(diagnostic);
  return text == nullptr ? 0 : alike_[{diagnostic.id, *text}]++;
}

std::vector<Note> Locator::IncludesOf(const sources::SourceFile& file) {
  // Nobody reads more of them.
  constexpr std::size_t kMost = 10;
  std::vector<Note> includes;
  for (const sources::SourcePlace* place = sources().IncludedAt(file); place != nullptr;
       place = sources().IncludedAt(*place->file)) {
    if (includes.size() == kMost) {
      includes.push_back({"and so on", {}});
      break;
    }
    includes.push_back({"included from here",
                        {place->file->path(), place->line, std::nullopt, nullptr, std::nullopt}});
  }
  return includes;
}

const sources::SourceView& Locator::sources() {
  if (!sources_) sources_.emplace(script_, read_from_);
  return *sources_;
}

std::optional<sources::SourcePlace> Locator::Find(const Diagnostic& diagnostic) {
  const Location& known = diagnostic.at;
  if (known.source != nullptr) return sources::SourcePlace{known.source, known.first_line};
  if (diagnostic.anchor == Anchor::kUnknownSection) return TakeNext(UnknownSections());
  if (diagnostic.anchor == Anchor::kMissingEntry) {
    return TakeNext(SectionsWithout(*diagnostic.section, *diagnostic.entry));
  }
  const sources::SourceFile* file = FileOf(diagnostic);
  if (file == nullptr) return std::nullopt;
  return sources::SourcePlace{file, diagnostic.line};
}

const sources::SourceFile* Locator::FileOf(const Diagnostic& diagnostic) {
  const sources::SourceFile* best = nullptr;
  int best_likeness = -1;
  for (const sources::SourceFile* file : sources().FilesNamed(diagnostic.file)) {
    const int likeness = Likeness(file->At(diagnostic.line), diagnostic);
    if (likeness <= best_likeness) continue;
    best = file;
    best_likeness = likeness;
  }
  return best;
}

std::optional<sources::SourcePlace> Locator::TakeNext(Queue& queue) {
  if (queue.next == queue.sections.size()) return std::nullopt;
  const sources::SourceSection& taken = queue.sections[queue.next++];
  return sources::SourcePlace{taken.file, taken.section->line};
}

Locator::Queue& Locator::UnknownSections() {
  if (!unknown_sections_) {
    unknown_sections_ = std::make_unique<Queue>();
    for (const sources::SourceSection& candidate : sources().sections()) {
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
    for (const sources::SourceSection& candidate : sources().sections()) {
      if (candidate.section->name == section && !HasKey(*candidate.section, entry)) {
        place->second.sections.push_back(candidate);
      }
    }
  }
  return place->second;
}

}  // namespace rux::diagnostics
