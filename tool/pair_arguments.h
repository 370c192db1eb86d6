// A second file for commands that read debug meta files: the meta file that it has to belong to.
#ifndef TOOL_PAIR_ARGUMENTS_H_
#define TOOL_PAIR_ARGUMENTS_H_

#include <string>

#include "machine/load.h"
#include "tool/command.h"

namespace rux::tool {

// `names`: "--meta".
void AddMetaOfPair(Arguments& arguments, const char* names, std::string& meta, const char* help);

// Warns on standard error when the debug meta file belongs to another meta file, or when that
// cannot be found out. Without a meta file (empty), does nothing. Throws a Failure of wrong usage
// for a debug meta file that can be read only once.
void WarnUnlessPair(const std::string& meta, const std::string& debug_meta,
                    const machine::LoadOptions& options);

}  // namespace rux::tool

#endif  // TOOL_PAIR_ARGUMENTS_H_
