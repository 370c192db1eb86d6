#include <sys/stat.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "findings/finding.h"
#include "reader/archive.h"
#include "reader/script.h"
#include "reader/script_file.h"
#include "reader/texts.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"

namespace rux::sources {
namespace {

class Silence : public ruxcomp::findings::Sink {
 public:
  Silence() : before_(ruxcomp::findings::SetSink(this)) {}
  ~Silence() override { ruxcomp::findings::SetSink(before_); }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

  void Take(const ruxcomp::findings::Finding&) override {}

 private:
  ruxcomp::findings::Sink* const before_;
};

// Whether reading it takes its text away from others.
bool IsStream(const std::string& library_path) {
  struct stat status;
  const std::string path = ruxcomp::reader::ScriptFile::ActualPath(library_path);
  return ruxcomp::reader::Texts::Find(path) == nullptr &&
         stat(ToOpenablePath(path).c_str(), &status) == 0 && !S_ISREG(status.st_mode) &&
         !S_ISDIR(status.st_mode);
}

constexpr const char* kInclude =
    ruxcomp::language::KindOf(ruxcomp::language::SECTION_INCLUDE).keyword;
constexpr std::string_view kFile = ruxcomp::language::KeywordOf(ruxcomp::language::ENTRY_FILE);

class Loader {
 public:
  void Follow(const std::string& library_path) {
    if (IsStream(library_path)) {
      passed_over_ = true;
      return;
    }
    const std::unique_ptr<ruxcomp::reader::ScriptFile> file =
        ruxcomp::reader::ScriptFile::Open(library_path);
    if (file == nullptr || !file->Parse()) return;
    file->NoteRequest();
    for (const ruxcomp::reader::Section& section : file->script()->sections()) {
      if (section.name == kInclude) FollowIncludes(file->path(), section);
    }
  }

  bool passed_over() const { return passed_over_; }

 private:
  void FollowIncludes(const std::string& includer, const ruxcomp::reader::Section& section) {
    for (std::uint32_t i = 0; i < section.item_count; ++i) {
      const ruxcomp::reader::Item& item = section.items[i];
      ruxcomp::reader::ScriptFile::NoteDelivery(item);
      const std::string_view name = ruxcomp::reader::FirstPart(item);
      // The library rejects any other key, and an empty name.
      if (item.key != kFile || name.empty()) continue;
      Follow(std::string(ruxcomp::language::FolderOf(includer)).append(name));
    }
  }

  bool passed_over_ = false;
};

}  // namespace

SourceSet Load(const std::string& library_path) {
  const Silence silence;
  const ruxcomp::reader::Archive archive;
  Loader loader;
  loader.Follow(library_path);
  SourceSet sources(archive);
  if (loader.passed_over()) sources.MarkIncomplete();
  return sources;
}

}  // namespace rux::sources
