// The same machines as the peers load them: whole files in memory, used where they lie.
#ifndef BENCH_MICRO_PEERS_H_
#define BENCH_MICRO_PEERS_H_

#include <cstdint>
#include <string>

#include "machine_generated.h"

// The bytes of the machine's file, read when they are not those that were asked for last.
const std::string& TreeBytes(std::uint32_t sensors);  // what dtc made
const std::string& FlatBytes(std::uint32_t sensors);  // what flatc made

inline const void* Tree(std::uint32_t sensors) { return TreeBytes(sensors).data(); }
inline const bench::flat::Machine& Flat(std::uint32_t sensors) {
  return *bench::flat::GetMachine(FlatBytes(sensors).data());
}

#endif  // BENCH_MICRO_PEERS_H_
