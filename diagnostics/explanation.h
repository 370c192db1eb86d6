// The explanations of messages, as texts.
#ifndef DIAGNOSTICS_EXPLANATION_H_
#define DIAGNOSTICS_EXPLANATION_H_

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/registry.h"

namespace rux::diagnostics {

// A line for each message: id, severity, summary.
std::string MessageList(const std::vector<const MessageRow*>& rows);

// What a message means, with its examples, for a terminal.
std::string ExplanationText(const MessageRow& row);

// The same as a section of a Markdown document, without and with the document around all of them.
std::string ExplanationMarkdown(const MessageRow& row);
std::string MessagesMarkdown(const Registry& registry);

// What the examples mean by machine.rux.
extern const std::string_view kMachineScript;

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_EXPLANATION_H_
