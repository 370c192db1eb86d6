// A script and the files that it includes.
#ifndef TESTS_GENERATORS_SOURCE_FILES_H_
#define TESTS_GENERATORS_SOURCE_FILES_H_

#include <string>
#include <utility>
#include <vector>

// Path, with slashes, and contents; the first one is the script.
using SourceFiles = std::vector<std::pair<std::string, std::string>>;

// All of them, for people.
std::string TextOf(const SourceFiles& files);

#endif  // TESTS_GENERATORS_SOURCE_FILES_H_
