// Standard output and error, used so that nothing gets lost unnoticed.
#ifndef TOOL_STANDARD_STREAMS_H_
#define TOOL_STANDARD_STREAMS_H_

#include <string_view>

namespace rux {

// Sees to it that the three standard descriptors are open. Otherwise the next file to be opened
// would take the place of a closed one, and what is printed would end up in it. Writing to one that
// was closed still fails.
void OccupyStandardStreams();

void PrintOut(std::string_view text);
void PrintError(std::string_view text);

// Throws a Failure unless all that was printed on standard output got out.
void FlushStandardOutput();

}  // namespace rux

#endif  // TOOL_STANDARD_STREAMS_H_
