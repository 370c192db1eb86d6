// The forms in which machines are described elsewhere.
#ifndef IMPORTS_FORMATS_H_
#define IMPORTS_FORMATS_H_

#include <string>
#include <string_view>
#include <vector>

#include "imports/board.h"
#include "losses/ledger.h"
#include "reconcile/pairing.h"

namespace rux::imports {

struct Source {
  std::string path;  // as it was given
  std::string text;  // the bytes of the file
};
using Sources = std::vector<Source>;

// What formats that are tables ask for.
struct ReadOptions {
  std::string list;                   // the program that wrote a list; empty: to be recognised
  reconcile::PairingOptions columns;  // which column is which
};

struct Format {
  std::string_view name;
  // Notes every item of the sources in the ledger (BeginFile() first), and puts into the board what
  // the scripts can have of them. Throws a Failure that names file and line when a source is not of
  // that format.
  Board (*read)(const Sources& sources, const ReadOptions& options, losses::Ledger& ledger);
};

// In the order of the help.
const std::vector<Format>& Formats();

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_H_
