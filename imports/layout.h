// The scripts of a board, as a person lays them out.
#ifndef IMPORTS_LAYOUT_H_
#define IMPORTS_LAYOUT_H_

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "imports/board.h"
#include "losses/ledger.h"

namespace rux::imports {

// A file of a folder that has all of them.
struct ScriptFile {
  std::string name;
  std::string text;
};

inline constexpr char kMainScript[] = "main.rux";

struct LayoutOptions {
  std::vector<std::string> heading;          // the lines that the main script begins with
  std::map<std::string, std::uint32_t> ids;  // that sensors are to have, by their NAMEs in scripts
  std::set<std::uint32_t> taken;             // no other sensor gets one of these
};

// The main script first; then the words, the groups and devices, the sensors of each area, and the
// project file that says what the limits are numbers of. Decides about the items in the board. The
// same board gives the same bytes.
std::vector<ScriptFile> LayOut(const Board& board, const LayoutOptions& options,
                               losses::Ledger& ledger);

}  // namespace rux::imports

#endif  // IMPORTS_LAYOUT_H_
