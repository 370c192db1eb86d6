// What device tree sources call things.
#ifndef BENCH_MODEL_DEVICE_TREE_H_
#define BENCH_MODEL_DEVICE_TREE_H_

#include <set>
#include <string>

#include "bench/model/machine.h"

// Names of nodes and properties are written small, with dashes.
std::string Dashed(std::string name);

// The label of what an operand refers to; "" when it refers to nothing.
std::string LabelOf(const Operand& operand);

// The labels that are needed.
std::set<std::string> LabelsOf(const Machine& machine);

#endif  // BENCH_MODEL_DEVICE_TREE_H_
