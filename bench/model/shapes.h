// Scripts with very many of one thing: what costs more than its share shows in them.
#ifndef BENCH_MODEL_SHAPES_H_
#define BENCH_MODEL_SHAPES_H_

#include <cstdint>
#include <string>
#include <vector>

// What rux says of a script.
enum class Verdict { kClean, kWarned, kRefused };

struct Shape {
  const char* name;
  const char* what;     // of what the script has `count`
  std::uint32_t count;  // how many make the shape worth a look
  Verdict verdict;
  // Writes the files into the folder, which exists: main.rux and what it includes.
  void (*write)(std::uint32_t count, const std::string& folder);
};

const std::vector<Shape>& Shapes();

#endif  // BENCH_MODEL_SHAPES_H_
