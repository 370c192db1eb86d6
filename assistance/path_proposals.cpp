// Proposals for the files that an INCLUDE names.
#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "assistance/completion.h"
#include "assistance/place.h"
#include "assistance/proposals.h"
#include "index/index.h"
#include "index/spot.h"
#include "ruxcomp/language/paths.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kScriptExtension = ".rux";

}  // namespace

// The folder that is written so far is looked through; the file itself is left out.
void ProposePaths(const Writing& writing, ProposalList& proposals) {
  const fs::path file = writing.index.files()[writing.at.file]->path();
  const std::string_view written = TextAt(writing.index, {writing.at.file, writing.spot.text});
  const std::string folder(language::FolderOf(written));
  std::error_code error;
  ProposalList found;
  fs::path searched = file.parent_path() / language::WithSlashes(folder);
  if (searched.empty()) searched = ".";
  for (fs::directory_iterator entry(searched, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    const bool is_folder = entry->is_directory(error);
    const bool is_script = entry->path().extension() == kScriptExtension;
    if (name.front() == '.' || !(is_folder || is_script)) continue;
    if (folder.empty() && entry->path().filename() == file.filename()) continue;
    const std::string text = folder + name + (is_folder ? "\\" : "");
    found.push_back({is_folder ? Proposal::Kind::kFolder : Proposal::Kind::kFile, text, "", text});
  }
  std::sort(found.begin(), found.end(),
            [](const Proposal& a, const Proposal& b) { return a.label < b.label; });
  proposals.insert(proposals.end(), found.begin(), found.end());
}

}  // namespace rux::assistance
