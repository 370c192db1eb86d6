// The client at the other end, and what it can do.
#ifndef SERVER_CLIENT_H_
#define SERVER_CLIENT_H_

#include <algorithm>
#include <string>
#include <utility>

#include "protocol/json.h"

namespace rux::server {

class Client {
 public:
  // Throw a Failure when the client cannot be reached.
  void Send(const std::string& message) const;
  void Notify(const char* method, const protocol::Json& params) const;
  // For people, in a log.
  void Log(const std::string& text) const;

  void SetCapabilities(protocol::Json capabilities) { capabilities_ = std::move(capabilities); }
  // What it said of itself at that path of members; null when it said nothing.
  template <class... Keys>
  const protocol::Json& capability(const Keys&... keys) const {
    return protocol::At(capabilities_, keys...);
  }
  template <class... Keys>
  bool can(const Keys&... keys) const {
    return protocol::Has(capabilities_, keys...);
  }
  // What it said of the findings that it is sent or asks for.
  template <class... Keys>
  const protocol::Json& capability_of_findings(const Keys&... keys) const {
    const char* const way = asks_for_findings() ? "diagnostic" : "publishDiagnostics";
    return capability("textDocument", way, keys...);
  }
  // The form of a text in Markdown for a client that takes the formats at that path: one that names
  // none takes this one.
  template <class... Keys>
  protocol::Json MarkupOf(const std::string& markdown, const Keys&... keys) const {
    const protocol::Json& formats = capability(keys...);
    const bool is_taken = !formats.is_array() ||
                          std::find(formats.begin(), formats.end(), "markdown") != formats.end();
    return {{"kind", is_taken ? "markdown" : "plaintext"}, {"value", markdown}};
  }
  // Whether it asks for findings, and takes none that are sent: one that does both would show each
  // twice, and is sent them.
  bool asks_for_findings() const {
    return capability("textDocument", "publishDiagnostics").is_null() &&
           !capability("textDocument", "diagnostic").is_null();
  }

 private:
  protocol::Json capabilities_;
};

}  // namespace rux::server

#endif  // SERVER_CLIENT_H_
