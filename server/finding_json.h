// Findings as clients get them.
#ifndef SERVER_FINDING_JSON_H_
#define SERVER_FINDING_JSON_H_

#include <cstddef>
#include <string>

#include "analysis/analysis.h"
#include "analysis/findings.h"
#include "protocol/json.h"
#include "server/session.h"

namespace rux::server {

// The URI of a file: that of the document, when it is open.
std::string UriOf(const Session& session, const analysis::File& file);

protocol::Json DiagnosticOf(const Session& session, const analysis::Analysis::Located& located);

// At the top of a document: why a machine could not be checked; how much more there is to show.
protocol::Json DiagnosticOfFailure(const std::string& failure);
protocol::Json DiagnosticOfRest(std::size_t count);

}  // namespace rux::server

#endif  // SERVER_FINDING_JSON_H_
