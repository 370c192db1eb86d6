#include <cstdint>

#include "ruxcomp/data.h"  // IWYU pragma: keep
#include "ruxcomp/query.h"

extern "C" {
std::uint32_t g_dwLastError = 0;
}

void gcSetLastError(std::uint32_t code) { g_dwLastError = code; }

std::uint32_t gcGetLastError() { return g_dwLastError; }
