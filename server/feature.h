// What clients can ask for: a file in features/ for each, and a row in features.def.
#ifndef SERVER_FEATURE_H_
#define SERVER_FEATURE_H_

#include <string>
#include <vector>

#include "protocol/json.h"
#include "server/client.h"
#include "server/session.h"

namespace rux::server {

// When a request is answered.
enum class Timing {
  kAtOnce,
  // When the machines of the document, or without one of all documents, are known. They are read as
  // their texts are at that time.
  kWithMachines,
  kWithFindings,  // when what is found in the document, or in all, is about the texts as they are
};

struct RequestRow {
  const char* method;
  Timing timing;
  // The result. Throws a RequestError, or an exception of JSON for parameters of another form.
  protocol::Json (*answer)(const Session& session, const protocol::Json& params);
};

struct Feature {
  const char* capability;  // "documentLinkProvider"; of one inside another: "workspace/..."
  protocol::Json options;  // its value
  std::vector<RequestRow> requests;
  // Whether the client is to know of it; null: each is. Requests are answered in any case.
  bool (*is_for)(const Client& client) = nullptr;
};

// The rows of features.def.
const std::vector<Feature>& Features();

// Null when no feature answers the method.
const RequestRow* FindRequest(const std::string& method);

#define FEATURE(name) Feature name();
#include "server/features.def"

}  // namespace rux::server

#endif  // SERVER_FEATURE_H_
