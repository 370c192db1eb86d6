// Which warnings are reported, and which of them are errors.
#ifndef DIAGNOSTICS_SEVERITIES_H_
#define DIAGNOSTICS_SEVERITIES_H_

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/registry.h"
#include "findings/message_row.h"

namespace rux::diagnostics {

using ruxcomp::findings::Level;

// A setting that Severities::Set takes, and what it is about.
struct SeveritySetting {
  std::string text;
  std::string_view about;
};
std::vector<SeveritySetting> SeveritySettings(const Registry& registry);

// What becomes of a message.
struct Ruling {
  Severity severity;
  bool is_dropped = false;
  bool is_suppressed = false;  // dropped because a setting says so
};

// Which groups are reported without a setting.
enum class Purpose {
  kCheck,  // all but style
  kLint,   // style alone
  kFix,    // all
};

// Warnings may be left out or made errors: all of them, those of a group, those of an id. Without a
// setting, the purpose decides. What is set for an id counts more than what is
// set for its group, and that more than what is set for all; otherwise the last setting counts.
// Errors stay errors, except those that may be lowered: "no-error=ID" makes them warnings.
//
// Settings come from two sources: those of the command line count more than those of the project.
class Severities {
 public:
  explicit Severities(const Registry& registry, Purpose purpose = Purpose::kCheck)
      : registry_(registry), purpose_(purpose) {}

  // Takes settings, separated by commas: "NAME", "no-NAME", "error=NAME" or "no-error=NAME" of a
  // group, an id or all; "none" is "no-all", and "error" makes what is reported errors. Returns why
  // it cannot, or nothing.
  std::string Set(const std::string& settings);

  void RaiseAll() { own_.all.is_raised = true; }

  // What was set so far is the project's.
  void EndProject() { project_ = std::exchange(own_, {}); }

  // Of a message that has the severity by itself.
  Ruling RulingOn(const MessageRow& row, Severity severity) const;

 private:
  struct Choice {
    std::optional<bool> is_reported;
    std::optional<bool> is_raised;
  };
  // What one source says.
  struct Choices {
    Choice all;
    std::map<Level, Choice> by_group;
    std::map<const MessageRow*, Choice> by_row;
  };
  struct Prefix {
    std::string_view text;
    Choice choice;
  };
  static const Prefix kPrefixes[];

  std::string SetOne(std::string_view setting);
  Choice* FindTarget(std::string_view name);
  std::string UnknownText(std::string_view name) const;

  static void ApplyOwn(const Choices& choices, const MessageRow& row, Choice& choice);

  const Registry& registry_;
  const Purpose purpose_;
  Choices project_;
  Choices own_;
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_SEVERITIES_H_
