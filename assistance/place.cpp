#include "assistance/place.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "index/index.h"
#include "index/records.h"
#include "ruxcomp/language/paths.h"
#include "sources/source_file.h"

namespace rux::assistance {

Location LocationOf(const index::Definition& definition) {
  return {definition.file, definition.name};
}

Location LocationOf(const index::Reference& reference) { return {reference.file, reference.name}; }

std::string_view TextAt(const index::Index& index, const Location& at) {
  return std::string_view(index.files()[at.file]->text())
      .substr(at.range.begin, at.range.end - at.range.begin);
}

std::string PlaceText(const index::Index& index, const Location& at) {
  const sources::SourceFile& file = *index.files()[at.file];
  return fmt::format("{}:{}", ruxcomp::language::BaseNameOf(file.library_path()),
                     file.LineAt(at.range.begin));
}

void AddOnce(std::vector<Location>& locations, const Location& location) {
  if (std::find(locations.begin(), locations.end(), location) == locations.end()) {
    locations.push_back(location);
  }
}

}  // namespace rux::assistance
