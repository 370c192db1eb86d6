// rux explain [ID...]
#include <memory>
#include <string>
#include <vector>

#include "diagnostics/messages/explanation.h"
#include "diagnostics/messages/messages.h"
#include "support/failure.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux {
namespace {

struct Options {
  std::vector<std::string> ids;
  std::string format = "text";
};

ExitStatus Explain(const Options& options) {
  const bool is_markdown = options.format == "markdown";
  std::string text;
  if (options.ids.empty()) text = is_markdown ? MessagesMarkdown() : MessageList();
  for (const std::string& id : options.ids) {
    const MessageRow* row = FindMessageById(id);
    if (row == nullptr) throw Failure(ExitStatus::kFindings, UnknownMessageText(id));
    if (!text.empty()) text += '\n';
    text += is_markdown ? ExplanationMarkdown(*row) : ExplanationText(*row);
  }
  PrintOut(text);
  return ExitStatus::kDone;
}

}  // namespace

Action SetUpExplain(Arguments& arguments) {
  const auto options = std::make_shared<Options>();
  arguments.Add("ID", &options->ids, "The ids of messages, as they end in [brackets]; all: a list");
  arguments.Add("--format", &options->format, "text or markdown")
      .OneOf("FORMAT", {"text", "markdown"});
  arguments.Footer("Example:\n  rux explain undefined-word");
  return [options] { return Explain(*options); };
}

}  // namespace rux
