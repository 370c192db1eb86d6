// Findings sent to the client whenever they change.
#ifndef SERVER_PUBLISHER_H_
#define SERVER_PUBLISHER_H_

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "protocol/json.h"
#include "server/session.h"

namespace rux::server {

class Publisher {
 public:
  // Sends what is found in a file, or that nothing is, unless the client has that already.
  void Publish(const Session& session, const std::string& whole_name);

 private:
  struct Published {
    std::string uri;
    std::optional<std::int64_t> version;  // of the document
    protocol::Json diagnostics = protocol::Json::array();
  };

  // As it is to be.
  Published StateOf(const Session& session, const std::string& whole_name);
  static void Send(const Session& session, const Published& published);
  void LogNew(const Session& session, const std::set<std::string>& failures);

  std::map<std::string, Published> published_;  // by whole names
  std::set<std::string> logged_;
};

}  // namespace rux::server

#endif  // SERVER_PUBLISHER_H_
