// The files of a machine, and which includes which.
#ifndef GRAPH_INCLUDES_H_
#define GRAPH_INCLUDES_H_

#include <string>

#include "browse/relations.h"
#include "machine/load.h"

namespace rux::graph {

// Of a script, which need not be correct, or a debug meta file: things of the kind INCLUDE, by
// their paths, the main script first, and a link for each file that another one includes. Throws a
// Failure for a meta file, and for what cannot be read.
browse::Relations ReadIncludes(const std::string& name, const machine::LoadOptions& options);

}  // namespace rux::graph

#endif  // GRAPH_INCLUDES_H_
