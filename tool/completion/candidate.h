// What the word at the cursor may become.
#ifndef TOOL_COMPLETION_CANDIDATE_H_
#define TOOL_COMPLETION_CANDIDATE_H_

#include <string>
#include <vector>

namespace rux::tool {

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

}  // namespace rux::tool

#endif  // TOOL_COMPLETION_CANDIDATE_H_
