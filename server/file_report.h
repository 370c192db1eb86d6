// All that is found in a file, as clients get it.
#ifndef SERVER_FILE_REPORT_H_
#define SERVER_FILE_REPORT_H_

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "protocol/json.h"
#include "server/session.h"

namespace rux::server {

struct FileReport {
  std::string uri;                      // empty: the file is in no machine
  std::optional<std::int64_t> version;  // of the document
  std::set<std::string> failures;       // why nothing is known, or not all
  protocol::Json diagnostics = protocol::Json::array();
};

FileReport ReportOf(const Session& session, const std::string& whole_name);

}  // namespace rux::server

#endif  // SERVER_FILE_REPORT_H_
