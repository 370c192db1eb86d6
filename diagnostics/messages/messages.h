// The messages about scripts: their ids and what they mean.
#ifndef DIAGNOSTICS_MESSAGES_MESSAGES_H_
#define DIAGNOSTICS_MESSAGES_MESSAGES_H_

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/severity.h"

namespace rux::diagnostics {

// In the order of the rows of message_rows.def; the numbers of the rows that are added continue.
enum class MessageId {
#define ROW(name, id, severity, text, summary, explanation, wrong, right) k##name,
#include "diagnostics/messages/message_rows.def"
  kFirstAdded
};

struct MessageRow {
  MessageId number;
  std::string_view id;  // "undefined-word"
  Severity severity;    // of a script that has nothing else against it
  std::string_view text;
  std::string_view summary;
  std::string_view explanation;
  std::string_view wrong;
  std::string_view right;
};

const std::vector<MessageRow>& MessageRows();

// Adds the messages of another room, whose numbers continue those of the rows so far. To be done
// before any row is looked for.
void AddMessageRows(const std::vector<MessageRow>& rows);

const MessageRow& RowOf(MessageId message);
inline std::string_view IdOf(MessageId message) { return RowOf(message).id; }

// Both return null when there is none: with the library's text, and with an id.
const MessageRow* FindMessageByText(std::string_view text);
const MessageRow* FindMessageById(std::string_view id);

// "there is no message undefind-word; near it: undefined-word"
std::string UnknownMessageText(const std::string& id);

// What the examples mean by machine.rux.
extern const std::string_view kMachineScript;

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_MESSAGES_MESSAGES_H_
