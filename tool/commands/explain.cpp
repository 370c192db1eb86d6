// rux explain [ID...]
#include <memory>
#include <string>
#include <vector>

#include "diagnostics/explanation.h"
#include "diagnostics/registry.h"
#include "driver/messages.h"
#include "support/failure.h"
#include "support/standard_streams.h"
#include "tool/arguments.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

struct Options {
  std::vector<std::string> ids;
  std::string format = "text";
};

support::ExitStatus Explain(const Options& options) {
  const diagnostics::Registry& registry = driver::AllMessages();
  const bool is_markdown = options.format == "markdown";
  std::string text;
  if (options.ids.empty())
    text =
        is_markdown ? diagnostics::MessagesMarkdown(registry) : diagnostics::MessageList(registry);
  for (const std::string& id : options.ids) {
    const diagnostics::MessageRow* row = registry.Find(id);
    if (row == nullptr)
      throw support::Failure(support::ExitStatus::kFindings, "{}", registry.UnknownText(id));
    if (!text.empty()) text += '\n';
    text +=
        is_markdown ? diagnostics::ExplanationMarkdown(*row) : diagnostics::ExplanationText(*row);
  }
  support::PrintOut(text);
  return support::ExitStatus::kDone;
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

}  // namespace rux::tool
