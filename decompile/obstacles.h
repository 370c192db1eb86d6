// What a debug meta file may hold that no single script can say.
#ifndef DECOMPILE_OBSTACLES_H_
#define DECOMPILE_OBSTACLES_H_

#include <optional>
#include <string>
#include <vector>

#include "decompile/script_sections.h"

namespace rux::decompile {

// Both return the first obstacle as a text for a message, with its place in the script that was
// compiled; none: null.

// A group that comes before its parent. The check compares lines, whatever files they are in, so
// a script of several files can do that.
std::optional<std::string> GroupBeforeParent(const compiled::DebugMeta& meta);

// An item that does not come out of `text`, the script of the sections, as it went in: a key or a
// part of a value with bytes that the reader of scripts never hands out. Another reader may.
std::optional<std::string> MisreadItem(const compiled::DebugMeta& meta,
                                       const std::vector<ScriptSection>& sections,
                                       const std::string& text);

}  // namespace rux::decompile

#endif  // DECOMPILE_OBSTACLES_H_
