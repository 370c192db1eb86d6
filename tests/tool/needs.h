// What some cases need of the system they run on.
#ifndef TESTS_TOOL_NEEDS_H_
#define TESTS_TOOL_NEEDS_H_

#include <string>

// The beginning of a shell command that runs the rest of it under the permissions of files, which
// hold root back only without its capabilities. Cases have it as $LIMITED.
std::string LimitedCommand();

// Why the system cannot run a case with these needs, or nothing. They are lines of
//   terminal     a pseudo-terminal, and the program script
//   dtc          the program dtc
//   permissions  $LIMITED runs `program`, and permissions of files hold in it
// Throws std::runtime_error for any other.
std::string WhatIsMissing(const std::string& needs, const std::string& program);

#endif  // TESTS_TOOL_NEEDS_H_
