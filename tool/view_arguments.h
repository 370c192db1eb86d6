// Arguments that several commands about compiled files have.
#ifndef TOOL_VIEW_ARGUMENTS_H_
#define TOOL_VIEW_ARGUMENTS_H_

#include <string>

#include "inspect/section_list.h"
#include "tool/command.h"

namespace rux::tool {

// FILE: a compiled file of either form.
void AddViewedFile(Arguments& arguments, std::string& file);

// --name and --file.
void AddSectionFilter(Arguments& arguments, inspect::SectionFilter& filter);

// --color, of standard output.
void AddOutputColor(Arguments& arguments, std::string& color);

}  // namespace rux::tool

#endif  // TOOL_VIEW_ARGUMENTS_H_
