// The lines of a dump, with the bytes that they describe beside them when those are asked for.
//
//   00000094: 05 00 00 20                         |   identifier
#ifndef INSPECT_LISTING_H_
#define INSPECT_LISTING_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/file.h"
#include "support/text_stream.h"

namespace rux::inspect {

class Listing {
 public:
  // `bytes` is the whole file; it must outlive the listing. The lines go to `out`.
  Listing(std::string_view bytes, bool raw, support::TextStream& out)
      : bytes_(bytes), raw_(raw), out_(out) {}

  bool raw() const { return raw_; }

  // A line for what has no bytes of its own, or whose bytes follow piece by piece.
  void Line(const std::string& text);
  void Line(const std::string& text, compiled::Extent extent);
  // Of a record's pieces, which there are only when bytes are asked for: a line that describes one
  // of them, and one for each of some.
  void Line(const std::string& text, const std::vector<compiled::Piece>& pieces, std::size_t piece);
  void Pieces(const std::string& indent, const std::vector<compiled::Piece>& pieces,
              std::size_t first = 0, std::size_t last = static_cast<std::size_t>(-1));
  void Blank() { out_ += '\n'; }

 private:
  const std::string_view bytes_;
  const bool raw_;
  support::TextStream& out_;
};

}  // namespace rux::inspect

#endif  // INSPECT_LISTING_H_
