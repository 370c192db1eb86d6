// A script, compiled, decompiled, compiled and decompiled again by the real program.
#ifndef TESTS_TOOL_DECOMPILE_ROUND_TRIP_H_
#define TESTS_TOOL_DECOMPILE_ROUND_TRIP_H_

#include <string>

#include "compiled/debug_meta.h"
#include "tests/generators/source_files.h"

struct RoundTrip {
  int status = 0;        // of the commands; what follows is empty unless it is 0
  std::string messages;  // that they printed
  std::string meta;      // the meta files, their times of creation made zero
  std::string meta_again;
  rux::compiled::DebugMeta debug_meta;
  rux::compiled::DebugMeta debug_meta_again;
  std::string script;
  std::string script_again;
};

// Runs in a folder of its own, which is gone afterwards.
RoundTrip TakeRoundTrip(const std::string& script_path);

// The same for files that are written there first; the first one is the script.
RoundTrip TakeRoundTrip(const SourceFiles& files);

#endif  // TESTS_TOOL_DECOMPILE_ROUND_TRIP_H_
