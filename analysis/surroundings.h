// Where machines are checked and read.
#ifndef ANALYSIS_SURROUNDINGS_H_
#define ANALYSIS_SURROUNDINGS_H_

#include <string>

#include "driver/compile_options.h"
#include "protocol/positions.h"
#include "workspace/documents.h"

namespace rux::analysis {

struct Surroundings {
  const driver::CompileOptions& settings;
  const workspace::Documents& documents;
  protocol::Encoding encoding;
  std::string root;  // the working folder
};

}  // namespace rux::analysis

#endif  // ANALYSIS_SURROUNDINGS_H_
