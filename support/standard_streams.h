// Standard output and error, used so that nothing gets lost unnoticed.
#ifndef SUPPORT_STANDARD_STREAMS_H_
#define SUPPORT_STANDARD_STREAMS_H_

#include <string_view>

namespace rux::support {

// Sees to it that the three standard descriptors are open. Otherwise the next file to be opened
// would take the place of a closed one, and what is printed would end up in it. Writing to one that
// was closed still fails.
void OccupyStandardStreams();

// Throw a Failure when the text does not get out whole. Output to a closed standard
// error is dropped silently.
void PrintOut(std::string_view text);
void PrintError(std::string_view text);

// Closes standard output if there was something to print. Throws a Failure when the system reports
// only now that it was not written.
void CloseStandardOutput();

}  // namespace rux::support

#endif  // SUPPORT_STANDARD_STREAMS_H_
