// A server of the language server protocol: takes messages and answers them.
#ifndef SERVER_SERVER_H_
#define SERVER_SERVER_H_

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "driver/compile_options.h"
#include "protocol/json.h"
#include "protocol/message.h"
#include "server/feature.h"
#include "server/progress.h"
#include "server/publisher.h"
#include "server/refresher.h"
#include "server/session.h"
#include "support/failure.h"

namespace rux::server {

class Server {
 public:
  explicit Server(driver::CompileOptions settings) : session_(std::move(settings)) {}

  // A message without its header. What it asks for may be answered later.
  void Take(const std::string& text);
  // Answers what could not be taken as a message.
  void Refuse(protocol::ErrorCode code, const std::string& text);

  // What to wait for besides messages, and for how long; none: as long as it takes.
  std::vector<int> descriptors() const;
  std::optional<std::chrono::milliseconds> timeout() const { return session_.analysis.timeout(); }
  // Takes what processes have found, starts others, and sends what is new. To be called when all
  // messages that are there are taken.
  void Advance();

  // Whether the client has ended the conversation.
  bool is_over() const { return is_over_; }
  // What the process is to exit with when the conversation is over or breaks off.
  support::ExitStatus status() const {
    return state_ == State::kShutDown ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
  }

 private:
  enum class State { kNew, kRunning, kShutDown };
  struct Waiting {
    protocol::Json id;
    const RequestRow* row;
    protocol::Json params;
  };

  void TakeRequest(const protocol::Message& request);
  void TakeNotice(const protocol::Message& notice);
  // Of requests that features do not answer.
  protocol::Json ResultOf(const protocol::Message& request);
  protocol::Json Initialize(const protocol::Json& params);
  protocol::Json ShutDown();
  void Cancel(const protocol::Json& id);
  bool IsEarly(const RequestRow& row, const protocol::Json& params) const;
  void AnswerWaiting();

  // Sends the result of answer(), or why there is none.
  void Answer(const protocol::Json& id, const std::function<protocol::Json()>& answer);

  Session session_;
  Publisher publisher_;
  Progress progress_;
  Refresher refresher_;
  std::vector<Waiting> waiting_;
  State state_ = State::kNew;
  bool is_over_ = false;
};

}  // namespace rux::server

#endif  // SERVER_SERVER_H_
