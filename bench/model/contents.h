// The kinds of content that are measured: what is fast with one may be slow with another.
#ifndef BENCH_MODEL_CONTENTS_H_
#define BENCH_MODEL_CONTENTS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "bench/model/machine.h"

// Each makes a machine with that many sensors; the same for the same number, everywhere.
Machine MakePlainMachine(std::uint32_t sensors);
Machine MakeRichMachine(std::uint32_t sensors);
Machine MakeRealMachine(std::uint32_t sensors);

struct Content {
  const char* name;
  Machine (*make)(std::uint32_t sensors);
  // For rux: turns off the warnings about what the author intends.
  std::vector<const char*> options;
};
inline const std::vector<Content>& Contents() {
  static const std::vector<Content> contents = {
      // Few entries, and much repetition.
      {"plain", MakePlainMachine, {}},
      // Long comments, limits that nearly all differ, values of all types.
      {"rich", MakeRichMachine, {}},
      // As descriptions of real machines: properties, lists, comments, included files.
      {"real", MakeRealMachine, {"-Wno-dropped-operands"}},
  };
  return contents;
}

// Throws std::out_of_range when there is none of that name.
const Content& ContentNamed(const std::string& name);

#endif  // BENCH_MODEL_CONTENTS_H_
