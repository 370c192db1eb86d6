// What may have become of a folder when something got in the way.
#ifndef TESTS_TOOL_FAULTS_VERDICT_H_
#define TESTS_TOOL_FAULTS_VERDICT_H_

#include <string>

#include "tests/tool/faults/board_folder.h"

// A run of rux that is meant to make `done` of `before`.
struct Task {
  const char* name;
  Arguments arguments;
  Contents before;
  Contents done;
};

// Compiling over older files and beside none, with one product, two and three, and decompiling.
const std::vector<Task>& Tasks();

// The one of them with the most steps, for what need not be seen with every one.
std::vector<Task> LongestTask();

// Why the end of the task is not one of those that may come of a fault: it is done, without an
// error; or it is not, nothing has changed, and the error is reported (3), be it as a file of the
// script that is missing (1), when only the dependency file may be new. Empty: it is.
std::string WrongEnd(const Task& task, const Ended& ended, const Contents& after);

#endif  // TESTS_TOOL_FAULTS_VERDICT_H_
