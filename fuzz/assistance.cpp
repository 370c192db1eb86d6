// Any text in an editor, asked about all over.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "assistance/folding.h"
#include "assistance/outline.h"
#include "fuzz/target.h"
#include "index/index.h"
#include "reader/texts.h"
#include "sources/source_set.h"
#include "tests/assistance/ask.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kMostPlaces = 64;
  ruxcomp::reader::Texts::Clear();
  // What it includes is not there.
  ruxcomp::reader::Texts::Put("fuzz\\main.rux", std::string(data, data + size));
  const rux::sources::SourceSet sources = rux::sources::Load("fuzz\\main.rux");
  if (sources.openings().empty()) return 0;
  const rux::index::Index index(sources);
  const std::size_t step = std::max<std::size_t>(1, size / kMostPlaces);
  for (std::size_t offset = 0; offset <= size; offset += step) {
    const char* fault = AskAll({index, 0, static_cast<std::uint32_t>(offset)});
    fuzz::Expect(fault == nullptr, fault);
  }
  rux::assistance::OutlineOf(index, 0);
  rux::assistance::FoldsOf(index, 0);
  return 0;
}
