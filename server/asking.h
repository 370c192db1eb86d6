// Where requests ask, and what they are answered with: places of the machines as their texts are.
#ifndef SERVER_ASKING_H_
#define SERVER_ASKING_H_

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/reading.h"
#include "assistance/place.h"
#include "protocol/json.h"
#include "protocol/positions.h"
#include "server/session.h"
#include "support/text_file.h"
#include "workspace/documents.h"

namespace rux::server {

// A place of a document in one of its machines.
struct Asked {
  const analysis::Reading& machine;
  assistance::Place at;
};

// In all machines that the document is a part of.
std::vector<Asked> AskedAt(const Session& session, const workspace::Document& document,
                           protocol::Position position);
// The place that the parameters of a request name.
std::vector<Asked> AskedBy(const Session& session, const protocol::Json& params);
// The beginning of the document that they name.
std::vector<Asked> AskedAbout(const Session& session, const protocol::Json& params);

// The same in a file that need not be open.
std::vector<Asked> AskedInFile(const Session& session, const std::string& uri,
                               protocol::Position position);

// Asks at the places and, for each file that is in an answer, in all other machines that have it: a
// name in a file of several machines is the same name in all of them.
void AskEverywhere(const Session& session, std::vector<Asked> asked,
                   const std::function<std::vector<assistance::Location>(const Asked&)>& ask);

protocol::Json RangeJson(const Asked& asked, support::ByteRange range);
protocol::Json LocationJson(const Session& session, const analysis::Reading& machine,
                            const assistance::Location& at);

// A list in which each value is once: several machines may have it.
class OnceList {
 public:
  void Add(protocol::Json value) {
    if (known_.insert(value).second) list_.push_back(std::move(value));
  }
  protocol::Json Take() { return std::move(list_); }

 private:
  protocol::Json list_ = protocol::Json::array();
  std::set<protocol::Json> known_;
};

// Edits of several files, each once, by URIs.
using Edits = std::map<std::string, OnceList>;
protocol::Json TextEditJson(const protocol::Json& range, const std::string& text);
protocol::Json WorkspaceEditJson(const Session& session, Edits edits);

}  // namespace rux::server

#endif  // SERVER_ASKING_H_
