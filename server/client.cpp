#include "server/client.h"

#include <unistd.h>

#include <string>

#include "protocol/framing.h"
#include "protocol/json.h"
#include "protocol/message.h"
#include "support/descriptor.h"
#include "support/failure.h"

namespace rux::server {

void Client::Send(const std::string& message) const {
  if (!support::WriteAll(STDOUT_FILENO, protocol::Framed(message))) {
    throw support::SystemFailure("cannot write", "standard output");
  }
}

void Client::Notify(const char* method, const protocol::Json& params) const {
  Send(protocol::Notification(method, params));
}

void Client::Log(const std::string& text) const {
  constexpr int kError = 1;
  Notify("window/logMessage", {{"type", kError}, {"message", text}});
}

}  // namespace rux::server
