// Rows of whole runs.
#ifndef BENCH_DRIVER_ROWS_H_
#define BENCH_DRIVER_ROWS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "bench/driver/report.h"
#include "bench/files/process.h"

struct RowName {
  std::string content;
  std::string job;
  std::uint32_t size;
};

// A row for the clock and one for the processor, with the same targets: on a busy machine the
// processor's time is the one to trust, on a quiet one the clock says more.
void AddTimes(Report& report, const RowName& name, const Usage& ours, const std::string& peer,
              const Usage& theirs, const std::vector<Target>& targets);

#endif  // BENCH_DRIVER_ROWS_H_
