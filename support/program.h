// Other programs, run without a shell: a word is one argument whatever is in it.
#ifndef SUPPORT_PROGRAM_H_
#define SUPPORT_PROGRAM_H_

#include <sys/types.h>

#include <string>
#include <vector>

#include "support/descriptor.h"

namespace rux::support {

struct Pipe {
  Descriptor read;
  Descriptor write;
};

// Closed in programs that are started. Throws a Failure.
Pipe OpenPipe();

// The open files that a program gets as its standard streams.
struct ProgramStreams {
  int input;
  int output;
  int messages;
};

// Starts the program that the first word names and the PATH has; the caller waits for its end.
// `purpose` begins the message when the PATH has none: "dts files are compiled". Throws a Failure.
pid_t StartProgram(std::vector<std::string> words, const ProgramStreams& streams,
                   const std::string& purpose);

// Waits until the program ends. Returns its exit status, or -1 when a signal ended it.
int WaitForProgram(pid_t process);

}  // namespace rux::support

#endif  // SUPPORT_PROGRAM_H_
