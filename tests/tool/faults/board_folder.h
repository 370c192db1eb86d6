// A folder with a script to compile and what a faultless run makes of it.
#ifndef TESTS_TOOL_FAULTS_BOARD_FOLDER_H_
#define TESTS_TOOL_FAULTS_BOARD_FOLDER_H_

#include <map>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tool/faults/rux_process.h"

// The files of a folder by their names. The times of creation that compiled files hold read as 0.
using Contents = std::map<std::string, std::string>;

// Takes away what is left of files on their way to their names.
void DropTemporaryNames(Contents& files);

// Makes the folder hold these files and nothing else.
void Fill(const TempFolder& folder, const Contents& files);
Contents ContentsOf(const TempFolder& folder);

// board.rux and words.rux, which it includes and needs.
Contents Scripts();

// What becomes of these files when nothing gets in the way.
Contents Done(const Contents& before, const Arguments& arguments);

#endif  // TESTS_TOOL_FAULTS_BOARD_FOLDER_H_
