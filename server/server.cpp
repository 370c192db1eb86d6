#include "server/server.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/analysis.h"
#include "protocol/json.h"
#include "protocol/message.h"
#include "protocol/positions.h"
#include "server/feature.h"
#include "server/notifications.h"
#include "server/publisher.h"
#include "server/session.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using protocol::At;
using protocol::ErrorCode;
using protocol::Json;
using protocol::Message;
using protocol::RequestError;

// A client that asks for more has stopped listening.
constexpr std::size_t kMostWaiting = 1000;

Json CapabilitiesFor(const Session& session) {
  Json capabilities = {{"positionEncoding", protocol::NameOf(session.encoding)}};
  AddSynchronisation(capabilities);
  for (const Feature& feature : Features()) {
    if (feature.is_for != nullptr && !feature.is_for(session.client)) continue;
    capabilities[Json::json_pointer(std::string("/") + feature.capability)] = feature.options;
  }
  return capabilities;
}

}  // namespace

void Server::Take(const std::string& text) {
  Json id;
  try {
    const Message message = protocol::ParseMessage(text, id);
    if (message.kind == Message::Kind::kRequest) TakeRequest(message);
    if (message.kind == Message::Kind::kNotification) TakeNotice(message);
    if (message.kind == Message::Kind::kAnswer) progress_.TakeAnswer(message);
  } catch (const RequestError& error) {
    session_.client.Send(protocol::ErrorAnswer(id, error.code(), error.what()));
  }
}

void Server::Refuse(ErrorCode code, const std::string& text) {
  session_.client.Send(protocol::ErrorAnswer(nullptr, code, text));
}

// Called as a function and not inlined: when the answer throws, clang 14 otherwise has the
// parameters where the id was.
void Server::Answer(const Json& id, const std::function<Json()>& answer) {
  try {
    session_.client.Send(protocol::Answer(id, answer()));
  } catch (const RequestError& error) {
    session_.client.Send(protocol::ErrorAnswer(id, error.code(), error.what()));
  } catch (const Json::exception&) {
    session_.client.Send(
        protocol::ErrorAnswer(id, ErrorCode::kInvalidParams, "the parameters are malformed"));
  } catch (const std::exception& error) {  // of the system's: the server goes on
    session_.client.Send(protocol::ErrorAnswer(id, ErrorCode::kInternalError, error.what()));
  }
}

void Server::TakeRequest(const Message& request) {
  const RequestRow* row = state_ == State::kRunning ? FindRequest(request.method) : nullptr;
  if (row != nullptr && IsEarly(*row, request.params)) {
    waiting_.push_back({request.id, row, request.params});
    if (waiting_.size() > kMostWaiting) Cancel(waiting_.front().id);
    return;
  }
  Answer(request.id, [&] {
    return row != nullptr ? row->answer(session_, request.params) : ResultOf(request);
  });
}

bool Server::IsEarly(const RequestRow& row, const Json& params) const {
  if (row.timing == Timing::kAtOnce) return false;
  const bool with_findings = row.timing == Timing::kWithFindings;
  const analysis::Analysis& analysis = session_.analysis;
  const Json& uri = At(params, "textDocument", "uri");
  if (!uri.is_string())
    return with_findings ? !analysis.IsAllUpToDate() : !analysis.HasAllMachines();
  const workspace::Document* document = session_.documents.Find(uri.get<std::string>());
  if (document == nullptr) return false;
  return with_findings ? !analysis.IsUpToDate(document->whole_name())
                       : !analysis.HasMachinesOf(*document);
}

Json Server::ResultOf(const Message& request) {
  if (request.method == "initialize") return Initialize(request.params);
  if (state_ == State::kNew) {
    throw RequestError(ErrorCode::kServerNotInitialized, "initialize comes first");
  }
  if (state_ == State::kShutDown) {
    throw RequestError(ErrorCode::kInvalidRequest, "the server is shut down");
  }
  if (request.method == "shutdown") return ShutDown();
  throw RequestError(ErrorCode::kMethodNotFound, "no such request: " + request.method);
}

Json Server::Initialize(const Json& params) {
  if (state_ != State::kNew) {
    throw RequestError(ErrorCode::kInvalidRequest, "the server is initialized already");
  }
  AddFolders(session_, params);
  session_.client.SetCapabilities(At(params, "capabilities"));
  session_.encoding =
      protocol::NegotiatedEncoding(session_.client.capability("general", "positionEncodings"));
  session_.analysis.SetEncoding(session_.encoding);
  state_ = State::kRunning;
  return {{"capabilities", CapabilitiesFor(session_)},
          {"serverInfo", {{"name", "rux"}, {"version", RUX_TOOL_VERSION}}}};
}

Json Server::ShutDown() {
  while (!waiting_.empty()) Cancel(waiting_.front().id);
  state_ = State::kShutDown;
  return nullptr;
}

void Server::TakeNotice(const Message& notice) {
  if (notice.method == "exit") {
    is_over_ = true;
  } else if (notice.method == "$/cancelRequest") {
    Cancel(At(notice.params, "id"));
  } else if (state_ == State::kRunning && notice.method == "initialized") {
    WatchFiles(session_);
  } else if (state_ == State::kRunning) {
    TakeNotification(session_, notice.method, notice.params);
  }
}

// A request that is answered already stays answered.
void Server::Cancel(const Json& id) {
  const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                  [&](const Waiting& waiting) { return waiting.id == id; });
  if (found == waiting_.end()) return;
  const Json cancelled = found->id;
  waiting_.erase(found);
  session_.client.Send(
      protocol::ErrorAnswer(cancelled, ErrorCode::kRequestCancelled, "the request is cancelled"));
}

std::vector<int> Server::descriptors() const {
  return state_ == State::kRunning ? session_.analysis.descriptors() : std::vector<int>();
}

void Server::Advance() {
  if (state_ != State::kRunning) return;
  session_.analysis.Collect();
  session_.analysis.Start();
  progress_.Update(session_);
  const std::set<std::string> changed = session_.analysis.TakeChanged();
  if (!session_.client.asks_for_findings()) {
    for (const std::string& file : changed) publisher_.Publish(session_, file);
  }
  refresher_.Update(session_, changed);
  AnswerWaiting();
}

void Server::AnswerWaiting() {
  std::vector<Waiting> still;
  for (Waiting& waiting : waiting_) {
    if (IsEarly(*waiting.row, waiting.params)) {
      still.push_back(std::move(waiting));
    } else {
      Answer(waiting.id, [&] { return waiting.row->answer(session_, waiting.params); });
    }
  }
  waiting_ = std::move(still);
}

}  // namespace rux::server
