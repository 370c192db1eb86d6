// Running a program as a whole and seeing what it took.
#ifndef BENCH_FILES_PROCESS_H_
#define BENCH_FILES_PROCESS_H_

#include <string>

#include "bench/files/model_files.h"

struct Usage {
  double wall = 0;       // seconds from start to end
  double processor = 0;  // seconds of processor time, user and system
  double memory = 0;     // bytes at the peak
  double faults = 0;     // pages that the system gave it or mapped
};

// Runs the command with its output thrown away. Throws std::runtime_error when it cannot be started
// or does not end with `status`. The peak is never reported as less
// than that of the process that calls this.
Usage Run(const Command& command, int status = 0);

#endif  // BENCH_FILES_PROCESS_H_
