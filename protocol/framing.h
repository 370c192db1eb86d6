// Messages in a stream of bytes: each has a header with its length.
#ifndef PROTOCOL_FRAMING_H_
#define PROTOCOL_FRAMING_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace rux::protocol {

// A message with all text of the longest script that people edit, escaped, is shorter.
inline constexpr std::size_t kLargestMessage = std::size_t{64} << 20;

class FrameReader {
 public:
  enum class Outcome {
    kMore,      // the next message is not complete
    kMessage,   // there is one
    kTooLarge,  // there was one, which is left out
    kBroken,    // what comes is no header: where messages begin is not known any more
  };

  void Add(std::string_view bytes);

  // To be called until there is no more. `message` is set when there is one.
  Outcome Next(std::string& message);

  // Whether the bytes so far end in a message.
  bool is_inside() const { return used_ < bytes_.size() || left_out_ > 0; }

 private:
  std::string bytes_;
  std::size_t used_ = 0;      // of them
  std::size_t left_out_ = 0;  // bytes that come next and belong to no message
};

// The message with its header.
std::string Framed(std::string_view message);

}  // namespace rux::protocol

#endif  // PROTOCOL_FRAMING_H_
