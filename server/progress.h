// How far the first check of all machines is, for clients that show it.
#ifndef SERVER_PROGRESS_H_
#define SERVER_PROGRESS_H_

#include <cstddef>

#include "protocol/message.h"
#include "server/session.h"

namespace rux::server {

class Progress {
 public:
  // To be called whenever something may have happened.
  void Update(const Session& session);
  // The client's answer to any request.
  void TakeAnswer(const protocol::Message& answer);

 private:
  enum class State {
    kBefore,   // nothing is checked so far
    kAsked,    // the client is to make a place for it
    kAllowed,  // it has one
    kShown,
    kOver,
  };

  void Ask(const Session& session);
  void Show(const Session& session);

  State state_ = State::kBefore;
  std::size_t machines_ = 0;  // that were checked, as it was shown last
};

}  // namespace rux::server

#endif  // SERVER_PROGRESS_H_
