// Answering shells that ask how the command line goes on.
#ifndef TOOL_COMPLETION_COMPLETION_H_
#define TOOL_COMPLETION_COMPLETION_H_

#include <string>
#include <vector>

#include "support/failure.h"
#include "tool/command.h"
#include "tool/command_line.h"

namespace rux::tool {

// One way in which the word at the cursor may go on.
struct Candidate {
  std::string text;  // the whole word
  std::string description;
  const char* rest = "";  // what the word may go on with, though it is complete
};

// The answer to a shell: words, or files, which shells know better how to find.
struct Candidates {
  std::vector<Candidate> words;
  bool are_files = false;
  std::vector<std::string> extensions;  // of the files; none: any file
};

// What the beginning `typed` of the argument may become; also candidates that begin otherwise, for
// shells that forgive typing mistakes. May throw a Failure about a file among `given`.
Candidates CandidatesFor(const CommandArgument& argument, const GivenValues& given,
                         const std::string& typed);

// The kinds of sections that the compiled file holds.
std::vector<Candidate> KindWords(const std::string& file);

// The names of what a machine has, also after a kind, and IDs after a '#': for `rux refs`
// (browse/refs.h). Throws a Failure when the file cannot be read.
std::vector<Candidate> NameWords(const std::string& file, const std::string& typed);

// The path as typed so far, with its last step replaced by each that may be there: names, IDs after
// a '#', ordinals after a '@'. What cannot be typed is left out, or is there as its ordinal.
//
// The first is for `rux get` (inspect/file_view.h), the second for `rux where`
// (inspect/debug_find.h). Both throw a Failure when the file cannot be read or has nothing where
// the path leads.
std::vector<Candidate> PathWords(const std::string& file, const std::string& typed);
std::vector<Candidate> DebugMetaPathWords(const std::string& file, const std::string& typed);

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
