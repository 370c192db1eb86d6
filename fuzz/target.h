// What every fuzz target has: the function that takes one input, and how it reports a find.
//
// A target feeds its input to the library, and ends the process when anything but a promised
// outcome comes of it. The sanitizers see to the rest.
#ifndef FUZZ_TARGET_H_
#define FUZZ_TARGET_H_

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Called by libFuzzer, or by replay.cpp. Always answers 0. What an input does depends on nothing
// but the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// Ends the process when a promise is broken.
inline void Expect(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

}  // namespace fuzz

#endif  // FUZZ_TARGET_H_
