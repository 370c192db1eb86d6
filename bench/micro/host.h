// A host of the library: it loads generated machines and wants to hear of no problem.
#ifndef BENCH_MICRO_HOST_H_
#define BENCH_MICRO_HOST_H_

#include <cstdint>
#include <string>

#include "ruxcomp/model.h"
#include "ruxmeta.h"

// Loads the meta file of a machine, unless it is the one that is loaded.
void LoadMachine(std::uint32_t sensors);

// The read model of it.
const ruxcomp::Model& ModelOf(std::uint32_t sensors);

// The same for C.
const ruxmeta_model* CModelOf(std::uint32_t sensors);

// The path of a script the way that the library wants it: folders are named with backslashes.
std::string ScriptPath(const std::string& path);

// Ends the program unless `done`: nothing is measured that did not work.
void Require(bool done, const char* what);

#endif  // BENCH_MICRO_HOST_H_
