// All messages that a program may show, and their explanations as text.
#ifndef DIAGNOSTICS_REGISTRY_H_
#define DIAGNOSTICS_REGISTRY_H_

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "findings/message_row.h"

namespace rux::diagnostics {

using ruxcomp::findings::Level;
using ruxcomp::findings::MessageRow;
using ruxcomp::findings::Severity;

// The groups of warnings, the gravest first, and what each is about.
struct Group {
  Level level;
  std::string_view about;
};
inline constexpr Group kGroups[] = {
    {Level::kLoss, "something is dropped, or compiled differently from what is written"},
    {Level::kSuspect, "nothing is lost, but the script probably does not say what was meant"},
    {Level::kStyle, "a matter of opinion or of the firmware; off by default"},
};

class Registry {
 public:
  // Takes the messages of all rooms that have any, in the order in which they are listed.
  Registry(std::initializer_list<ruxcomp::findings::MessageRows> rooms);

  const std::vector<const MessageRow*>& rows() const { return rows_; }

  // Null when there is none.
  const MessageRow* Find(std::string_view id) const;

  // All whose id, summary or explanation has that text in it, in any case. When none has
  // THRESHOLD_WH, those that have THRESHOLD, unless the text is nearly an id.
  std::vector<const MessageRow*> About(const std::string& text) const;

  // "no such message: undefind-word; did you mean undefined-word?"
  std::string UnknownText(const std::string& id) const;

 private:
  std::vector<std::string> Ids() const;
  std::vector<const MessageRow*> With(std::string_view text) const;

  std::vector<const MessageRow*> rows_;
  std::unordered_map<std::string_view, const MessageRow*> by_id_;
};

// The messages by level, each group in the order of the ids, with a line for each message.
std::string MessageList(const std::vector<const MessageRow*>& rows);

// What a message means, with its examples, for a terminal.
std::string ExplanationText(const MessageRow& row);

// The same as a section of a Markdown document, without and with the document around all of them.
std::string ExplanationMarkdown(const MessageRow& row);
std::string MessagesMarkdown(const Registry& registry);

// What the examples mean by machine.rux, with a title and by itself.
std::string MachineText();
extern const std::string_view kMachineScript;

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_REGISTRY_H_
