#include "sources/source_set.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "findings/origin.h"
#include "reader/archive.h"
#include "reader/script.h"
#include "ruxcomp/model/seeded_hash.h"
#include "sources/source_file.h"
#include "support/text_file.h"

namespace rux::sources {
namespace {

// Of a script that did not fit into memory.
std::shared_ptr<ruxcomp::reader::Script> NoScript() {
  return std::make_shared<ruxcomp::reader::Script>("", [](const ruxcomp::reader::Problem&) {});
}

template <class Row>
const Row* Find(const Row* rows, std::size_t count, std::size_t at) {
  return at < count ? rows + at : nullptr;
}

}  // namespace

SourceSet::SourceSet(const ruxcomp::reader::Archive& archive) : refused_(archive.refused()) {
  AddOpenings(archive);
  AddPaths(archive);
  if (!openings_.empty()) AddSections(0);
}

void SourceSet::AddOpenings(const ruxcomp::reader::Archive& archive) {
  // Under another path, or with another text by now, it is another file.
  std::map<std::pair<const ruxcomp::reader::Script*, std::string>, const SourceFile*> known;
  openings_.reserve(archive.scripts().size());
  for (const ruxcomp::reader::ArchivedScript& script : archive.scripts()) {
    const SourceFile*& file = known[{script.script.get(), script.path}];
    if (file == nullptr) {
      const auto text = script.script != nullptr ? script.script : NoScript();
      file = distinct_
                 .emplace_back(std::make_unique<const SourceFile>(script.path,
                                                                  ToShownPath(script.opened), text))
                 .get();
    }
    first_openings_.emplace(file, openings_.size());
    openings_.push_back({file, script.includer, script.problems});
  }
}

void SourceSet::AddPaths(const ruxcomp::reader::Archive& archive) {
  ruxcomp::detail::HashSet<std::string> known;
  const auto add = [&](const std::string& path) {
    if (known.insert(path).second) files_.paths.push_back(path);
  };
  std::size_t next = 0;
  for (std::size_t opened = 0; opened <= openings_.size(); ++opened) {
    for (; next < refused_.size() && refused_[next].opened_before == opened; ++next) {
      add(ToOpenablePath(refused_[next].path));
    }
    if (opened < openings_.size()) add(ToOpenablePath(archive.scripts()[opened].opened));
  }
}

// Returns the opening after the last one that it led to.
std::size_t SourceSet::AddSections(std::size_t opening) {
  const std::vector<ruxcomp::reader::Section>& of_file = openings_[opening].file->sections();
  std::size_t next = opening + 1;
  for (std::size_t i = 0; i < of_file.size(); ++i) {
    sections_.push_back({openings_[opening].file, &of_file[i]});
    const auto is_included_here = [&](const ruxcomp::reader::Includer& includer) {
      return includer && includer->script == opening && includer->place.section == i;
    };
    while (next < openings_.size() && is_included_here(openings_[next].includer)) {
      next = AddSections(next);
    }
  }
  return next;
}

void SourceSet::DropSections() {
  sections_ = std::vector<SourceSection>();
  for (const auto& file : distinct_) file->DropSections();
}

OriginSpot SourceSet::At(const ruxcomp::findings::Origin& origin) const {
  OriginSpot spot;
  spot.opening = Find(openings_.data(), openings_.size(), origin.script);
  if (spot.opening == nullptr) return spot;
  const std::vector<ruxcomp::reader::Section>& of_file = spot.opening->file->sections();
  spot.section = Find(of_file.data(), of_file.size(), origin.section);
  if (spot.section != nullptr) {
    spot.item = Find(spot.section->items, spot.section->item_count, origin.item);
  }
  return spot;
}

const Opening* SourceSet::FirstOpeningOf(const support::TextFile* file) const {
  const auto found = first_openings_.find(file);
  return found == first_openings_.end() ? nullptr : &openings_[found->second];
}

OriginSpot SourceSet::IncluderOf(const Opening& opening) const {
  if (!opening.includer) return {};
  const auto ordinal = [](std::size_t at) { return static_cast<std::uint32_t>(at); };
  const ruxcomp::reader::ArchivedItem& includer = *opening.includer;
  return At({ordinal(includer.script), ordinal(includer.place.section),
             ordinal(includer.place.item), ruxcomp::findings::Origin::kNone});
}

std::string ReasonOf(const ruxcomp::reader::RefusedScript& refused) {
  switch (refused.reason) {
    case ruxcomp::reader::Refusal::kTooLarge:
      return std::strerror(EFBIG);
    case ruxcomp::reader::Refusal::kOutOfMemory:
      return std::strerror(ENOMEM);
    case ruxcomp::reader::Refusal::kIsStream:
      return "a pipe or device cannot be included";
    case ruxcomp::reader::Refusal::kIsOpenAlready:
    case ruxcomp::reader::Refusal::kTooMany:
      return "the reader cannot open it";
    default:
      return std::strerror(refused.error);
  }
}

}  // namespace rux::sources
