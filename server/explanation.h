// Where the messages are explained.
#ifndef SERVER_EXPLANATION_H_
#define SERVER_EXPLANATION_H_

#include <string>

namespace rux::server {

// The URI of what the installed page says about the id; empty when the page is not installed beside
// the program.
std::string ExplanationOf(const std::string& id);

}  // namespace rux::server

#endif  // SERVER_EXPLANATION_H_
