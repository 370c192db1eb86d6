// What a value does, in words and symbols, and what it uses.
#ifndef PAGE_VALUE_FLOW_H_
#define PAGE_VALUE_FLOW_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/value.h"
#include "page/contents.h"
#include "page/html.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {

// A piece of a value as it is shown, and what it names.
struct Piece {
  std::string text;
  std::optional<Thing> thing = {};
};

// "G_A > 80 ? 1 : 0", "READ_NTC(8)", "bus 5, base 0x30, operand 8, number 1", "CURVE[G_A]"
std::vector<Piece> PiecesOf(const Contents& contents, const ruxcomp::Entry& entry);

void WritePieces(const std::vector<Piece>& pieces, Html& out);

// The values of a thing as a list, each with all that it uses below it.
void WriteFlow(const Contents& contents, Thing thing, Html& out);

}  // namespace rux::page

#endif  // PAGE_VALUE_FLOW_H_
