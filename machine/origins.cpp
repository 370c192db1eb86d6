#include "machine/origins.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "machine/place.h"
#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/debug_meta_records.h"
#include "ruxcomp/file/debug_meta_walk.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"

namespace rux::machine {

namespace file = ruxcomp::file;
namespace language = ruxcomp::language;

class Origins::Reader : public file::DebugMetaVisitor {
 public:
  explicit Reader(Origins& origins) : origins_(origins) {}

  void OnWord(file::Cursor&, file::DebugWordView& word) {
    origins_.words_.emplace_back(word.name, word.value);
  }
  void OnFiles(const file::Texts& files, file::Extent) {
    files.ForEach([this](std::string_view path) {
      origins_.files_.push_back(sources::ToOpenablePath(std::string(path)));
    });
  }
  void OnSectionBegin(file::Cursor&, const file::DebugSectionView& section) {
    sections_ = &origins_.sections_[(section.identifier & language::kKindMask) - 1];
    sections_->push_back({{section.file_index, section.line}, origins_.entries_.size(), 0});
  }
  void OnEntry(file::Cursor&, file::DebugEntryView& entry) {
    if (!entry.is_given()) return;
    origins_.entries_.push_back({entry.name, {entry.file_index, entry.line}});
    ++sections_->back().entry_count;
  }

 private:
  Origins& origins_;
  std::vector<SectionSpot>* sections_ = nullptr;  // of the kind that one is in
};

Origins::Origins(const std::string& bytes, std::string revision)
    : bytes_(bytes.begin(), bytes.end()), revision_(std::move(revision)) {
  Reader reader(*this);
  file::Faults none;
  file::WalkDebugMeta({bytes_.data(), bytes_.size()}, none, reader);
}

const Origins::SectionSpot* Origins::Find(const language::SectionKind& kind,
                                          std::size_t ordinal) const {
  const auto& sections = sections_[(kind.source & language::kKindMask) - 1];
  return ordinal < sections.size() ? &sections[ordinal] : nullptr;
}

std::optional<Place> Origins::PlaceOf(Spot spot) const {
  if (spot.file >= files_.size()) return std::nullopt;
  return Place{files_[spot.file], spot.line, revision_};
}

std::optional<Place> Origins::OfSection(const language::SectionKind& kind,
                                        std::size_t ordinal) const {
  const SectionSpot* section = Find(kind, ordinal);
  return section == nullptr ? std::nullopt : PlaceOf(section->at);
}

const Origins::EntrySpot* Origins::FindEntry(const SectionSpot& section,
                                             std::string_view key) const {
  constexpr std::size_t kMostWalked = 64;
  const EntrySpot* const begin = entries_.data() + section.first_entry;
  const EntrySpot* const end = begin + section.entry_count;
  if (section.entry_count <= kMostWalked) {
    const EntrySpot* const found =
        std::find_if(begin, end, [&](const EntrySpot& entry) { return entry.key == key; });
    return found == end ? nullptr : found;
  }
  auto& by_key = by_key_[section.first_entry];
  if (by_key.empty()) {
    for (const EntrySpot* entry = begin; entry != end; ++entry) by_key.emplace(entry->key, entry);
  }
  const auto found = by_key.find(key);
  return found == by_key.end() ? nullptr : found->second;
}

std::optional<Place> Origins::OfEntry(const language::SectionKind& kind, std::size_t ordinal,
                                      std::string_view key) const {
  const SectionSpot* section = Find(kind, ordinal);
  if (section == nullptr) return std::nullopt;
  const EntrySpot* entry = FindEntry(*section, key);
  return PlaceOf(entry == nullptr ? section->at : entry->at);
}

}  // namespace rux::machine
