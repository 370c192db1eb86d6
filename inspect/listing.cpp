#include "inspect/listing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "ruxcomp/file/views.h"
#include "support/safe_text.h"

namespace rux::inspect {
namespace {

constexpr std::size_t kMostShown = 12;  // bytes in a line

// The columns to the left of the text.
constexpr char kColumns[] = "{:<45}{:<2} | {}\n";

}  // namespace

void Listing::Line(const std::string& text) {
  out_ += raw_ ? fmt::format(kColumns, "", "", text) : text + '\n';
}

void Listing::Line(const std::string& text, compiled::Extent extent) {
  if (!raw_) return Line(text);
  const std::string shown =
      fmt::format("{:08X}:", extent.offset) +
      support::Hex(bytes_.substr(extent.offset, std::min(extent.size, kMostShown)), " ");
  const bool is_cut = extent.size > kMostShown;
  const std::string size = is_cut ? fmt::format("  ({} bytes)", extent.size) : "";
  out_ += fmt::format(kColumns, shown, is_cut ? ".." : "", text + size);
}

void Listing::Line(const std::string& text, const std::vector<compiled::Piece>& pieces,
                   std::size_t piece) {
  Line(text, raw_ ? pieces[piece].extent : compiled::Extent());
}

void Listing::Pieces(const std::string& indent, const std::vector<compiled::Piece>& pieces,
                     std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < std::min(last, pieces.size()); ++i) {
    Line(indent + pieces[i].name, pieces[i].extent);
  }
}

}  // namespace rux::inspect
