// How often a program asks for memory.
#ifndef BENCH_FILES_ALLOCATIONS_H_
#define BENCH_FILES_ALLOCATIONS_H_

#include <cstdint>

#include "bench/files/model_files.h"

// Runs the command, which has to end well. Throws std::runtime_error when it does not, or cannot be
// counted.
std::uint64_t CountAllocations(const Command& command);

#endif  // BENCH_FILES_ALLOCATIONS_H_
