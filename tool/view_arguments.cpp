#include "tool/view_arguments.h"

#include <string>

#include "inspect/section_list.h"
#include "tool/command.h"

namespace rux::tool {

void AddViewedFile(Arguments& arguments, std::string& file) {
  arguments.Add("FILE", &file, "The meta file or debug meta file to read; - for standard input")
      .File()
      .Required();
}

void AddSectionFilter(Arguments& arguments, inspect::SectionFilter& filter) {
  arguments
      .Add("--name", &filter.name,
           "Show only sections whose name (or key, if they have no names) matches the pattern "
           "(*, ?, [...])")
      .Value("PATTERN");
  arguments
      .Add("--file", &filter.file,
           "Show only sections from source files that match the pattern (debug meta files only)")
      .Value("PATTERN");
}

void AddOutputColor(Arguments& arguments, std::string& color) {
  arguments.Add("--color", &color, "auto (default: on a terminal), always or never")
      .OneOf("WHEN", {"auto", "always", "never"});
}

}  // namespace rux::tool
