#include "bench/files/allocations.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <ios>
#include <stdexcept>
#include <string>

#include "bench/files/model_files.h"
#include "bench/files/process.h"

std::uint64_t CountAllocations(const Command& command) {
  const std::string path = ScratchFolder() + "/allocations";
  std::uint64_t count = 0;
  const auto bytes = reinterpret_cast<char*>(&count);
  std::ofstream(path, std::ios::binary).write(bytes, sizeof count);

  std::string preloaded = RUX_COUNT_ALLOCATIONS;
  if (const char* others = std::getenv("LD_PRELOAD")) preloaded += std::string(":") + others;
  Command counted = {"env", "LD_PRELOAD=" + preloaded, "RUX_BENCH_ALLOCATIONS=" + path};
  counted.insert(counted.end(), command.begin(), command.end());
  Run(counted);

  if (!std::ifstream(path, std::ios::binary).read(bytes, sizeof count) || count == 0) {
    throw std::runtime_error("cannot count the allocations of " + command[0]);
  }
  return count;
}
