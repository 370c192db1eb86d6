#include "server/serve.h"

#include <sys/poll.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "driver/compile_options.h"
#include "protocol/framing.h"
#include "protocol/message.h"
#include "server/server.h"
#include "support/failure.h"

namespace rux::server {
namespace {

using protocol::FrameReader;

// Processes work elsewhere: paths of the command line are made whole.
void MakeWhole(std::string& path) {
  if (!path.empty()) path = std::filesystem::absolute(path).lexically_normal().string();
}

class Conversation {
 public:
  explicit Conversation(driver::CompileOptions settings) : server_(std::move(settings)) {}

  support::ExitStatus Run() {
    while (!server_.is_over() && Wait()) server_.Advance();
    return server_.status();
  }

 private:
  // Waits for something to happen and takes all messages that are there. False at the end of the
  // input.
  bool Wait() {
    std::vector<pollfd> waited = {{STDIN_FILENO, POLLIN, 0}};
    for (const int number : server_.descriptors()) waited.push_back({number, POLLIN, 0});
    const std::optional<std::chrono::milliseconds> timeout = server_.timeout();
    poll(waited.data(), waited.size(), timeout ? static_cast<int>(timeout->count()) : -1);
    while (!server_.is_over() && HasInput()) {
      if (!ReadInput()) return false;
    }
    return true;
  }

  static bool HasInput() {
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, 0) > 0;
  }

  bool ReadInput() {
    char bytes[1 << 16];
    const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
    if (count < 0) return errno == EINTR;
    frames_.Add({bytes, static_cast<std::size_t>(count)});
    TakeMessages();
    if (count == 0 && frames_.is_inside()) {
      throw support::Failure(support::ExitStatus::kTrouble, "standard input ends within a message");
    }
    return count > 0;
  }

  void TakeMessages() {
    std::string message;
    while (!server_.is_over()) {
      switch (frames_.Next(message)) {
        case FrameReader::Outcome::kMore:
          return;
        case FrameReader::Outcome::kMessage:
          server_.Take(message);
          break;
        case FrameReader::Outcome::kTooLarge:
          server_.Refuse(protocol::ErrorCode::kInvalidRequest, "the message is too large");
          break;
        case FrameReader::Outcome::kBroken:
          server_.Refuse(protocol::ErrorCode::kParseError, "the message has no Content-Length");
          throw support::Failure(support::ExitStatus::kTrouble,
                                 "standard input does not carry language server messages");
      }
    }
  }

  Server server_;
  FrameReader frames_;
};

}  // namespace

support::ExitStatus Serve(driver::CompileOptions settings) {
  for (std::string& folder : settings.include_folders) MakeWhole(folder);
  MakeWhole(settings.project_choice.path);
  MakeWhole(settings.baseline_files.read);
  return Conversation(std::move(settings)).Run();
}

}  // namespace rux::server
