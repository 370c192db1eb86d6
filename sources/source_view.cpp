#include "sources/source_view.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

#include "reader/script_file.h"
#include "sources/script_path.h"
#include "sources/sub_strings.h"
#include "support/descriptor.h"

namespace rux::sources {
namespace {

// Whether there is something that the library may have read.
bool CouldBeOpened(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

}  // namespace

std::unique_ptr<SourceFile> SourceFile::Read(const std::string& library_path,
                                             const std::string& read_from) {
  std::unique_ptr<SourceFile> file(new SourceFile);
  file->library_path_ = library_path;
  file->path_ = ToOpenablePath(library_path);
  // cppcheck-suppress shadowFunction
  const std::string& path = read_from.empty() ? file->path_ : read_from;
  // Only what can be read more than once: a pipe's text is for the library, and its writer must not
  // see it opened and closed.
  struct stat status;
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  const support::Descriptor open_file(
      open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (fstat(open_file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  file->device_ = status.st_dev;
  file->inode_ = status.st_ino;
  // What the library's reader did not take is not taken here either; and the file may have grown.
  constexpr std::size_t kMost = reader::kLargestScript;
  if (static_cast<std::size_t>(status.st_size) > kMost) return nullptr;
  std::string text;
  if (!support::ReadAll(open_file.number(), kMost, text) || text.size() > kMost) return nullptr;
  // The library's own reader has told the problems.
  const auto ignore = [](const reader::Problem&) {};
  file->script_ = std::make_unique<const reader::Script>(std::move(text), ignore);
  return file;
}

std::optional<SourceSpot> SourceFile::At(std::uint32_t line) const {
  const auto by_line = [](std::uint32_t wanted, const auto& has) { return wanted < has.line; };
  const auto section_after = std::upper_bound(sections().begin(), sections().end(), line, by_line);
  if (section_after == sections().begin()) return std::nullopt;
  const reader::Section& section = section_after[-1];
  if (section.line == line) return SourceSpot{&section, nullptr};
  const reader::Item* end = section.items + section.item_count;
  const reader::Item* item_after = std::upper_bound(section.items, end, line, by_line);
  if (item_after == section.items || item_after[-1].line != line) return std::nullopt;
  return SourceSpot{&section, item_after - 1};
}

std::string_view SourceFile::Line(std::uint32_t line) const {
  return line == 0 || line > line_count() ? std::string_view() : script_->Line(line);
}

bool SourceFile::IsSameFile(const SourceFile& other) const {
  return device_ == other.device_ && inode_ == other.inode_;
}

SourceView::SourceView(const std::string& library_path, const std::string& read_from) {
  Open(library_path, read_from);
  Follow(library_path, nullptr);
}

const std::vector<const SourceFile*>& SourceView::FilesNamed(const std::string& base_name) const {
  static const std::vector<const SourceFile*> none;
  const auto found = by_base_name_.find(base_name);
  return found == by_base_name_.end() ? none : found->second;
}

const SourcePlace* SourceView::IncludedAt(const SourceFile& file) const {
  const auto found = included_at_.find(&file);
  return found == included_at_.end() ? nullptr : &found->second;
}

const SourcePlace* SourceView::IncludedAgainAt(const SourceFile& file) const {
  const auto found = included_again_at_.find(&file);
  return found == included_again_at_.end() ? nullptr : &found->second;
}

bool SourceView::ClosesLoop(const SourceFile& file, std::uint32_t line) const {
  return loops_.count({&file, line}) != 0;
}

bool SourceView::Follow(const std::string& library_path, const SourcePlace* included_at) {
  const SourceFile* file = Open(library_path);
  if (file == nullptr) return true;
  const auto is_this = [&](const SourceFile* open) { return open->IsSameFile(*file); };
  if (std::any_of(chain_.begin(), chain_.end(), is_this)) return false;
  // The reader's limits, which it has told of.
  if (chain_.size() >= reader::kMostOpen || opened_ >= reader::kMostOpened ||
      opened_text_ >= reader::kMostText) {
    return true;
  }
  if (included_at != nullptr && !included_at_.try_emplace(file, *included_at).second) {
    included_again_at_.try_emplace(file, *included_at);
  }
  ++opened_;
  opened_text_ += file->text().size();
  chain_.push_back(file);
  for (const reader::Section& section : file->sections()) {
    sections_.push_back({file, &section});
    if (section.name == "INCLUDE") FollowIncludes(*file, section);
  }
  chain_.pop_back();
  return true;
}

void SourceView::FollowIncludes(const SourceFile& file, const reader::Section& section) {
  for (const reader::Item* item = section.items; item != section.items + section.item_count;
       ++item) {
    const std::string_view name = FirstSubString(*item);
    // The library rejects any other key, and an empty name.
    if (item->key != "FILE" || name.empty()) continue;
    const SourcePlace place{&file, item->line};
    if (!Follow(FolderOf(file.library_path()) + std::string(name), &place)) {
      loops_.emplace(&file, item->line);
    }
  }
}

const SourceFile* SourceView::Open(const std::string& library_path, const std::string& read_from) {
  const auto [place, is_new] = files_.try_emplace(library_path);
  if (is_new) {
    files_read_.paths.push_back(ToOpenablePath(library_path));
    place->second = SourceFile::Read(library_path, read_from);
    if (place->second == nullptr) {
      files_read_.complete &= !CouldBeOpened(files_read_.paths.back());
    } else {
      by_base_name_[BaseNameOf(library_path)].push_back(place->second.get());
    }
  }
  return place->second.get();
}

}  // namespace rux::sources
