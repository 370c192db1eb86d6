#include "server/progress.h"

#include <fmt/format.h>

#include "analysis/analysis.h"
#include "protocol/json.h"
#include "protocol/message.h"
#include "server/session.h"
#include "support/number_text.h"

namespace rux::server {
namespace {

using protocol::Json;

// Of the request and of what is shown.
constexpr const char* kToken = "first-check";

void NotifyProgress(const Session& session, const Json& value) {
  session.client.Notify("$/progress", {{"token", kToken}, {"value", value}});
}

Json ShownJson(const analysis::Analysis::Checked& checked, bool is_first) {
  Json value = {{"kind", is_first ? "begin" : "report"},
                {"percentage", checked.all == 0 ? 0 : checked.machines * 100 / checked.all}};
  // Before the machines are known, nobody knows how many there are.
  if (checked.all > 0) {
    value["message"] =
        fmt::format("{} of {}", checked.machines, support::CountText(checked.all, "machine"));
  }
  if (is_first) value["title"] = "Checking scripts";
  return value;
}

}  // namespace

void Progress::Ask(const Session& session) {
  if (session.documents.all().empty()) return;
  if (!session.client.can("window", "workDoneProgress")) {
    state_ = State::kOver;
    return;
  }
  session.client.Send(
      protocol::Request(kToken, "window/workDoneProgress/create", {{"token", kToken}}));
  state_ = State::kAsked;
}

void Progress::TakeAnswer(const protocol::Message& answer) {
  if (state_ != State::kAsked || answer.id != kToken) return;
  state_ = answer.is_refusal ? State::kOver : State::kAllowed;
}

void Progress::Show(const Session& session) {
  const analysis::Analysis::Checked checked = session.analysis.checked();
  const bool is_first = state_ == State::kAllowed;
  if (!is_first && checked.machines == machines_) return;
  NotifyProgress(session, ShownJson(checked, is_first));
  machines_ = checked.machines;
  state_ = State::kShown;
}

void Progress::Update(const Session& session) {
  if (state_ == State::kBefore) Ask(session);
  const bool is_allowed = state_ == State::kAllowed || state_ == State::kShown;
  if (!is_allowed) return;
  if (!session.analysis.IsAllUpToDate()) return Show(session);
  if (state_ == State::kShown) NotifyProgress(session, {{"kind", "end"}});
  state_ = State::kOver;
}

}  // namespace rux::server
