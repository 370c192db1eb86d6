// The exported functions that open and read a script and end a compile run.
#include <cstdint>
#include <string>

#include "frontend/parse.h"
#include "ruxcomp/compile.h"

using namespace ruxcomp::core;

std::uint32_t gccCompStart(const std::string& path) {
  CRUXParse::CountFromZero();
  return g_Parse.Start(path);
}

std::uint32_t gccParse() {
  g_Parse.Parse();
  return 1;
}

void gccCompEnd() { g_Parse.End(); }
