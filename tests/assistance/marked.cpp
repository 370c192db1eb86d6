#include "tests/assistance/marked.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

Marked::Marked(SourceFiles files)
    : machine_(WithoutMark(std::move(files), path_, offset_)),
      file_(machine_.index().FindFile(path_)) {}

SourceFiles Marked::WithoutMark(SourceFiles files, std::string& path, std::uint32_t& offset) {
  for (auto& [name, text] : files) {
    const std::size_t mark = text.find('^');
    if (mark == std::string::npos) continue;
    text.erase(mark, 1);
    path = name;
    offset = static_cast<std::uint32_t>(mark);
    return files;
  }
  throw std::logic_error("no mark");
}

std::string Marked::Shown(const rux::assistance::Location& at) const {
  const rux::sources::SourceFile& file = *machine_.index().files()[at.file];
  const std::string line = std::to_string(file.LineAt(at.range.begin));
  return (at.file == 0 ? line : file.path() + ":" + line) + ": " +
         machine_.TextAt(at.file, at.range);
}

std::vector<std::string> Marked::Shown(const std::vector<rux::assistance::Location>& places) const {
  std::vector<std::string> rows;
  for (const auto& each : places) rows.push_back(Shown(each));
  return rows;
}

std::string Edited(const rux::index::Index& index, rux::index::Id file,
                   const std::vector<rux::assistance::Edit>& edits) {
  std::vector<rux::assistance::Edit> own;
  for (const auto& each : edits) {
    if (each.at.file == file) own.push_back(each);
  }
  std::sort(own.begin(), own.end(),
            [](const auto& a, const auto& b) { return a.at.range.begin > b.at.range.begin; });
  std::string text = index.files()[file]->text();
  for (const auto& each : own) {
    text.replace(each.at.range.begin, each.at.range.end - each.at.range.begin, each.text);
  }
  return text;
}
