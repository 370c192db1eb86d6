// A test of a command-line program, written as one text file.
//
//   What the case is about.
//   === file boards/board.rux
//   [MORVRUX]
//   === run
//   rux check boards/board.rux
//   === stderr
//   boards/board.rux:1: error: ...
//   === exit
//   1
//
// A line "=== NAME" begins a part, which goes on up to the next one. What comes before the first is
// for people. Without a part of that name, nothing is expected to be printed and the exit status to
// be 0. The part "needs" names what a system may lack, one thing a line (needs.h).
#ifndef TESTS_TOOL_CASE_FILE_H_
#define TESTS_TOOL_CASE_FILE_H_

#include <string>
#include <utility>
#include <vector>

struct CaseFile {
  std::vector<std::pair<std::string, std::string>> files;  // path and contents
  std::string run;                                         // for the shell
  std::string needs;                                       // lines
  std::string standard_output;
  std::string standard_error;
  int exit_status = 0;
};

// Throws std::runtime_error when the file cannot be read, has another part, runs nothing or expects
// nothing.
CaseFile ReadCaseFile(const std::string& path);

#endif  // TESTS_TOOL_CASE_FILE_H_
