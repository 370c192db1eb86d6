// Asks the client to ask again for what has become another one without a change of the document.
#ifndef SERVER_REFRESHER_H_
#define SERVER_REFRESHER_H_

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "server/session.h"

namespace rux::server {

class Refresher {
 public:
  // To be called with the files about which something else may be known.
  void Update(const Session& session, const std::set<std::string>& changed);

 private:
  bool HasUnchangedDocument(const Session& session, const std::set<std::string>& changed);
  void Ask(const Session& session, const char* capability, const char* method);

  std::map<std::string, std::int64_t> versions_;  // of documents, by URIs, as they were last
  std::uint64_t requests_ = 0;
};

}  // namespace rux::server

#endif  // SERVER_REFRESHER_H_
