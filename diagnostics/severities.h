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

// A setting that Severities::Set takes, and the summary of the message that it names.
struct SeveritySetting {
  std::string text;
  std::string_view about;
};
std::vector<SeveritySetting> SeveritySettings(const Registry& registry);

// What is said of a message.
struct Ruling {
  Severity severity;
  bool is_raised = false;  // a warning that the command line makes an error
  bool is_dropped = false;
};

// Warnings may be made errors, all of them or those of an id, or be left out. A setting for an
// id overrides one for all, and the last of two for one id counts. Errors stay errors.
class Severities {
 public:
  explicit Severities(const Registry& registry) : registry_(registry) {}

  // Takes "error", "error=ID" or "no-ID". Returns why it cannot, or nothing.
  std::string Set(const std::string& setting);

  void RaiseAll() { raises_all_ = true; }

  // What becomes of a message that has the severity by itself.
  Ruling RulingOn(const MessageRow& row, Severity severity) const;

 private:
  enum class Override { kRaise, kDrop };

  const Registry& registry_;
  bool raises_all_ = false;
  std::map<const MessageRow*, Override> overrides_;
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_SEVERITIES_H_
