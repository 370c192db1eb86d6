// The language server on standard input and output.
#ifndef SERVER_SERVE_H_
#define SERVER_SERVE_H_

#include "driver/compile_options.h"
#include "support/failure.h"

namespace rux::server {

// Answers messages until the client ends the conversation. `settings`: those of rux check, for all
// machines. Throws a Failure when what comes are no messages.
support::ExitStatus Serve(driver::CompileOptions settings);

}  // namespace rux::server

#endif  // SERVER_SERVE_H_
