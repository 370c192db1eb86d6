// Several programs doing the same job, side by side: on a machine that others use, too, only what
// was measured in turns can be compared.
#ifndef BENCH_DRIVER_RACE_H_
#define BENCH_DRIVER_RACE_H_

#include <vector>

#include "bench/files/process.h"

struct Runner {
  Command command;
  int status = 0;  // how it ends when all goes well
};

// Runs them in turns, several times, and gives the median of each quantity for each runner.
std::vector<Usage> Race(const std::vector<Runner>& runners);

#endif  // BENCH_DRIVER_RACE_H_
