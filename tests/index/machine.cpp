#include "tests/index/machine.h"

#include <cstdint>

#include "reader/texts.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace {

namespace language = ruxcomp::language;
using namespace rux::index;

std::string Shown(const Space& space) {
  return std::string(language::KindOf(space.section).keyword) + "." +
         language::FindEntryRow(space.entry)->name;
}

rux::sources::SourceSet LoadTexts(const SourceFiles& files) {
  ruxcomp::reader::Texts::Clear();
  for (const auto& [path, text] : files) ruxcomp::reader::Texts::Put(path, text);
  rux::sources::SourceSet sources = rux::sources::Load(files.front().first);
  ruxcomp::reader::Texts::Clear();
  return sources;
}

}  // namespace

Machine::Machine(const SourceFiles& files)
    : sources_(LoadTexts(files)), index_(std::make_unique<Index>(sources_)) {}

Machine::Machine(const std::string& script) : Machine(SourceFiles{{"main.rux", script}}) {}

std::string Machine::TextAt(Id file, rux::support::ByteRange range) const {
  return index_->files()[file]->text().substr(range.begin, range.end - range.begin);
}

std::string Machine::PlaceOf(Id file, std::uint32_t offset) const {
  const rux::sources::SourceFile& found = *index_->files()[file];
  const std::string line = std::to_string(found.LineAt(offset));
  return file == 0 ? line : found.path() + ":" + line;
}

std::vector<std::string> Machine::Symbols(const std::string& space) const {
  std::vector<std::string> rows;
  for (Id id = 0; id < index_->symbols().size(); ++id) {
    const Symbol& symbol = index_->symbols()[id];
    std::string row = Shown(symbol.space) + " " + std::string(symbol.name) + ":";
    if (row.compare(0, space.size(), space) != 0) continue;
    for (const Id at : index_->DefinitionsOf(id)) {
      const Definition& definition = index_->definitions()[at];
      row += " " + PlaceOf(definition.file, definition.name.begin);
    }
    row += " <-";
    for (const Id at : index_->ReferencesTo(id)) {
      const Reference& reference = index_->references()[at];
      row += " " + PlaceOf(reference.file, reference.name.begin);
    }
    rows.push_back(row);
  }
  return rows;
}

std::vector<std::string> Machine::References(Resolution resolution) const {
  std::vector<std::string> rows;
  for (const Reference& reference : index_->references()) {
    if (reference.resolution != resolution) continue;
    rows.push_back(PlaceOf(reference.file, reference.name.begin) + ": " + Shown(reference.space) +
                   " " + TextAt(reference.file, reference.name));
  }
  return rows;
}

std::vector<std::string> Machine::Missing() const { return References(Resolution::kMissing); }
std::vector<std::string> Machine::Exempt() const { return References(Resolution::kExempt); }
