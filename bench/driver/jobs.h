// What is measured, in the order of the table.
#ifndef BENCH_DRIVER_JOBS_H_
#define BENCH_DRIVER_JOBS_H_

#include <cstdint>

#include "bench/driver/report.h"

// Ten times the model may take eleven times the time: log10(11).
constexpr Target kStraight = {Target::kGrowth, 1.0414};

// The size that targets speak of.
constexpr std::uint32_t kTargetSize = 10000;

// Whole machines of each content, of 10 sensors to `most`, compiled by rux, dtc and flatc; and very
// many small ones in one run.
void CompileMachines(Report& report, std::uint32_t most);

// Scripts with very many of one thing.
void CompileShapes(Report& report);

// Formatting a script of 10,000 lines: one that is formatted, and one that is not, whose machine is
// compiled twice for comparison.
void FormatScripts(Report& report);

// Comparing two compiled machines, and the same by comparing their sorted texts.
void CompareModels(Report& report);

// The table of a compiled machine, and the comparison with it.
void MakeTables(Report& report);

// Asking a file for one value with a program, and starting the program at all.
void AskAndStart(Report& report);

// The results of the programs in bench/micro, for machines of 100 sensors to `most`.
void MicroBenchmarks(Report& report, std::uint32_t most);

#endif  // BENCH_DRIVER_JOBS_H_
