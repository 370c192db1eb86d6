// One machine in the languages of the compilers that are compared: every fact of it in each, and
// what refers to something else in the way that the language has for it.
#ifndef BENCH_MODEL_WRITERS_H_
#define BENCH_MODEL_WRITERS_H_

#include <string>
#include <vector>

#include "bench/model/machine.h"

// Each writes the file and, beside it, those that it includes, and throws std::ios_base::failure
// when it cannot. Comments of sensors and limits are in all of them.

// A script for rux: names and defined words, as people write them.
void WriteScript(const Machine& machine, const std::string& path);

// A device tree source for dtc, the way that suits it best: sensors are nodes inside the node of
// their group, what a script refers to by name is a phandle (&label), IDs stay numbers. Only what
// is referred to has a label, for each label takes dtc a walk over the whole tree.
void WriteDeviceTree(const Machine& machine, const std::string& path);

// JSON for flatc with machine.fbs: references are indices into the lists, which nothing checks.
// Everything is in one file, JSON knows no other way.
void WriteJson(const Machine& machine, const std::string& path);

// Who can be asked for: a line for each sensor with its ID, its name and its path in the device
// tree, between tabs.
void WriteNames(const Machine& machine, const std::string& path);

struct Language {
  const char* name;  // also the ending of its files
  void (*write)(const Machine& machine, const std::string& path);
};
inline const std::vector<Language>& Languages() {
  static const std::vector<Language> languages = {
      {"rux", WriteScript}, {"dts", WriteDeviceTree}, {"json", WriteJson}, {"names", WriteNames}};
  return languages;
}

#endif  // BENCH_MODEL_WRITERS_H_
