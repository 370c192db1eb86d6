// The explanations of messages, as texts.
#ifndef TOOL_MESSAGES_EXPLANATION_H_
#define TOOL_MESSAGES_EXPLANATION_H_

#include <string>

#include "tool/messages/messages.h"

namespace rux {

// A line for each message: id, severity, summary.
std::string MessageList();

// What a message means, with its examples, for a terminal.
std::string ExplanationText(const MessageRow& row);

// The same as a section of a Markdown document, without and with the document around all of them.
std::string ExplanationMarkdown(const MessageRow& row);
std::string MessagesMarkdown();

}  // namespace rux

#endif  // TOOL_MESSAGES_EXPLANATION_H_
