// What the command line says of the severity of messages.
#ifndef DIAGNOSTICS_SEVERITIES_H_
#define DIAGNOSTICS_SEVERITIES_H_

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/registry.h"
#include "findings/message_row.h"

namespace rux::diagnostics {

// One that Severities::Set takes, and what the message is about that it names.
struct SeveritySetting {
  std::string text;
  std::string_view about;
};
std::vector<SeveritySetting> SeveritySettings(const Registry& registry);

// What is said of a message.
struct Ruling {
  Severity severity;
  bool is_raised = false;  // a warning that somebody wants to be an error
  bool is_dropped = false;
};

// Warnings may be made errors, all of them or those of an id, or be left out. What is said of an id
// counts more than what is said of all, and of two things about it the last. Errors stay what they
// are.
class Severities {
 public:
  explicit Severities(const Registry& registry) : registry_(registry) {}

  // Takes "error", "error=ID" or "no-ID". Returns why it cannot, or nothing.
  std::string Set(const std::string& setting);

  void RaiseAll() { raises_all_ = true; }

  // What becomes of a message that has the severity by itself.
  Ruling RulingOn(const MessageRow& row, Severity severity) const;

 private:
  enum class Wish { kRaise, kDrop };

  const Registry& registry_;
  bool raises_all_ = false;
  std::map<const MessageRow*, Wish> wishes_;
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_SEVERITIES_H_
