// Loading a file of any bytes with the library and asking it everything.
#ifndef TESTS_DAMAGE_LOADS_H_
#define TESTS_DAMAGE_LOADS_H_

#include <string>

enum class Form { kMeta, kDebugMeta };

// What loading the file comes to.
enum class Load {
  kAccepted,
  kRefused,
  kRaised,  // the error that a debug meta file raises whose records are shorter than they say
};

// In this process. What gcInit or gdInit left is queried and released, whatever it answered.
// Every other error is let through.
Load LoadFile(Form form, const std::string& path);

#endif  // TESTS_DAMAGE_LOADS_H_
