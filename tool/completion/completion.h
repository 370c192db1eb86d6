// Answering shells that ask how the command line goes on.
#ifndef TOOL_COMPLETION_COMPLETION_H_
#define TOOL_COMPLETION_COMPLETION_H_

#include <string>
#include <vector>

#include "support/failure.h"

namespace rux::tool {

// The first word of the command lines that are for shells: rux complete WORD... It is not a
// command, and --help does not list it.
inline constexpr char kCompletion[] = "complete";

// Prints what the last of the words may become. They are what follows `rux` on the command line
// up to the cursor, without the quotes of the shell; the last one is empty after a blank.
//
//   words                     and a line for each:
//   WORD<tab>REST<tab>TEXT    the whole word, what may follow it directly, what it means. WORD can
//                             be typed. One that ends in "/" or "=" is not finished.
//
//   files<tab>SIZE<tab>.EXTENSION ...
//                             the names of files, after the first SIZE bytes of the word
//
// Nothing when nothing is known; nothing is ever wrong.
support::ExitStatus Complete(const std::vector<std::string>& words);

}  // namespace rux::tool

#endif  // TOOL_COMPLETION_COMPLETION_H_
