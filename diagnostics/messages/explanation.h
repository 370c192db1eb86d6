// The explanations of messages, as texts.
#ifndef DIAGNOSTICS_MESSAGES_EXPLANATION_H_
#define DIAGNOSTICS_MESSAGES_EXPLANATION_H_

#include <string>

#include "diagnostics/messages/messages.h"

namespace rux::diagnostics {

// A line for each message: id, severity, summary.
std::string MessageList();

// What a message means, with its examples, for a terminal.
std::string ExplanationText(const MessageRow& row);

// The same as a section of a Markdown document, without and with the document around all of them.
std::string ExplanationMarkdown(const MessageRow& row);
std::string MessagesMarkdown();

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_MESSAGES_EXPLANATION_H_
