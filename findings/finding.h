// Messages as data, for a program that links the library's core and wants more than their text.
//
//   struct Collector : findings::Sink {
//     void Take(const findings::Finding& finding) override { ... }
//   };
//   Collector collector;
//   findings::SetSink(&collector);
#ifndef FINDINGS_FINDING_H_
#define FINDINGS_FINDING_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "findings/messages.h"
#include "findings/origin.h"

namespace ruxcomp::findings {

using Argument = std::variant<std::string_view, std::uint32_t>;

// The arguments of a message, in the order of its format.
class Arguments {
 public:
  Arguments() = default;
  Arguments(const Argument* first, std::size_t count) : first_(first), count_(count) {}

  const Argument* begin() const { return first_; }
  const Argument* end() const { return first_ + count_; }
  std::size_t size() const { return count_; }
  const Argument& operator[](std::size_t i) const { return first_[i]; }

 private:
  const Argument* first_ = nullptr;
  std::size_t count_ = 0;
};

// The place that a message begins with: the base name of the file, and a line.
struct Place {
  std::string_view file;
  std::uint32_t line;
};

// What a message is about.
struct Subject {
  Origin origin = {};
  Origin other = {};                // of the other definition, in messages about two
  std::optional<Place> place = {};  // none for messages without one
};

// The views are valid during Sink::Take.
struct Finding : Subject {
  MessageId message;
  Arguments arguments;  // all that the format takes, the place included
};

class Sink {
 public:
  virtual ~Sink() = default;
  virtual void Take(const Finding& finding) = 0;
};

namespace detail {
inline Sink* sink = nullptr;
}  // namespace detail

// Directs the messages of this process to a sink until the next call; null, the default, directs
// them to the host's Output. Returns the previous sink.
inline Sink* SetSink(Sink* sink) { return std::exchange(detail::sink, sink); }
inline Sink* CurrentSink() { return detail::sink; }

}  // namespace ruxcomp::findings

#endif  // FINDINGS_FINDING_H_
