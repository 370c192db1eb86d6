// The tokens that clients have been sent last, to send only what differs.
#ifndef SERVER_TOKEN_MEMORY_H_
#define SERVER_TOKEN_MEMORY_H_

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace rux::server {

// As messages have them: five numbers for each.
using TokenNumbers = std::vector<std::uint32_t>;

class TokenMemory {
 public:
  struct Sent {
    std::string id;
    TokenNumbers numbers;
  };

  // Null when the last ones of the document have another id.
  const Sent* Find(const std::string& uri, const std::string& id) const {
    const auto found = sent_.find(uri);
    return found == sent_.end() || found->second.id != id ? nullptr : &found->second;
  }
  // Answers their id.
  const std::string& Keep(const std::string& uri, TokenNumbers numbers) {
    Sent& sent = sent_[uri];
    sent = {std::to_string(++last_), std::move(numbers)};
    return sent.id;
  }
  void Forget(const std::string& uri) { sent_.erase(uri); }

 private:
  std::map<std::string, Sent> sent_;
  std::uint64_t last_ = 0;
};

}  // namespace rux::server

#endif  // SERVER_TOKEN_MEMORY_H_
