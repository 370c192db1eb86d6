// The sections and items of the script that means what a debug meta file holds.
#ifndef DECOMPILE_SCRIPT_SECTIONS_H_
#define DECOMPILE_SCRIPT_SECTIONS_H_

#include <string>
#include <vector>

#include "compiled/debug_meta.h"

namespace rux::decompile {

struct ScriptItem {
  const compiled::DebugEntry* entry;  // that it stands for; its name is the key
  std::vector<std::string> parts;     // the comma-separated parts of the value, without quotes
};

struct ScriptSection {
  const char* keyword;
  std::vector<ScriptItem> items;
};

// All but the INCLUDE sections, whose files have their sections here themselves, in the order of
// the file: kind by kind, which gives the kinds and the sections of each kind the order again that
// they had. The pointers go into `meta`.
//
// Words get numbers. Where a word is defined more than once, the last definition gets the value
// that the word had in the end: the file does not record in which order DEFINE and IFDEF sections
// followed each other.
std::vector<ScriptSection> ScriptSectionsOf(const compiled::DebugMeta& meta);

}  // namespace rux::decompile

#endif  // DECOMPILE_SCRIPT_SECTIONS_H_
