// What the library finds in a process that hosts it.
//
// The host here installs no plug-in: the library finds the reader in the program itself. Messages
// are formatted, so that all of their arguments are read, and counted.
#ifndef FUZZ_LIBRARY_STATE_H_
#define FUZZ_LIBRARY_STATE_H_

#include <cstddef>

namespace fuzz {

// The messages since the last call.
struct Messages {
  std::size_t count = 0;
  std::size_t characters = 0;

  bool operator==(const Messages& other) const {
    return count == other.count && characters == other.characters;
  }
};
Messages TakeMessages();

}  // namespace fuzz

#endif  // FUZZ_LIBRARY_STATE_H_
