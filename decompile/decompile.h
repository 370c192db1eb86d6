// From a debug meta file to the text of a script: sections and items, their text, and what no
// script can say.
#ifndef DECOMPILE_DECOMPILE_H_
#define DECOMPILE_DECOMPILE_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/debug_meta.h"

namespace rux::decompile {

struct ScriptItem {
  const compiled::DebugEntry* entry;  // the entry it comes from; its name is the key
  std::vector<std::string> parts;     // the comma-separated parts of the value, without quotes
};

struct ScriptSection {
  const char* keyword;
  const compiled::DebugSection* source;  // the section it comes from
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

// Begins with a comment that says what debug meta files do not keep. The comment is the same for
// every script, so that decompiling what a decompiled script compiles to gives that script again.
//
// Key and parts of an item come out of a script as they went in, provided that a script can say
// them at all (see GroupBeforeParent and MisreadItem). Parts get double quotes only where they need
// them.
std::string ScriptText(const std::vector<ScriptSection>& sections);

// What a debug meta file keeps of scripts, as one.
struct KeptScript {
  compiled::DebugMeta meta;
  std::vector<ScriptSection> sections;  // of it
  std::string text;
};
KeptScript KeptScriptOf(compiled::DebugMeta meta);

// A part of a value as a script has it: in double quotes where it needs them. No part has a double
// quote or a line end.
std::string PartText(std::string_view part);

// Both return the first obstacle as a text for a message, with its place in the script that was
// compiled; none: null.

// A group that comes before its parent. The check compares lines, whatever files they are in, so
// a script of several files can do that.
std::optional<std::string> GroupBeforeParent(const compiled::DebugMeta& meta);

// An item that does not come out of the text as it went in: a key or a part of a value with bytes
// that the reader of scripts never hands out. Another reader may.
std::optional<std::string> MisreadItem(const KeptScript& kept);

}  // namespace rux::decompile

#endif  // DECOMPILE_DECOMPILE_H_
