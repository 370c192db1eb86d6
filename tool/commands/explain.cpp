// rux explain [ID... | WORD]
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "diagnostics/registry.h"
#include "driver/messages.h"
#include "support/failure.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

constexpr const char* kAll = "all";

struct ExplainOptions {
  std::vector<std::string> ids;
  bool list = false;
  std::string format = "text";
};

using Rows = std::vector<const diagnostics::MessageRow*>;

Rows RowsOf(const diagnostics::Registry& registry, const std::vector<std::string>& ids) {
  Rows rows;
  for (const std::string& id : ids) {
    const diagnostics::MessageRow* row = registry.Find(id);
    if (row == nullptr)
      throw support::Failure(support::ExitStatus::kFindings, "{}", registry.UnknownText(id));
    rows.push_back(row);
  }
  return rows;
}

// What a single word that is not an id is about; empty when it is one, or is about nothing.
Rows RowsAbout(const diagnostics::Registry& registry, const std::vector<std::string>& words) {
  if (words.size() != 1 || words.front().empty() || registry.Find(words.front()) != nullptr)
    return {};
  return registry.About(words.front());
}

std::string Explanations(const Rows& rows, bool is_markdown) {
  std::string text;
  for (const diagnostics::MessageRow* row : rows) {
    if (!text.empty()) text += '\n';
    text +=
        is_markdown ? diagnostics::ExplanationMarkdown(*row) : diagnostics::ExplanationText(*row);
  }
  return text;
}

support::ExitStatus Explain(const ExplainOptions& options) {
  const diagnostics::Registry& registry = driver::AllMessages();
  const bool is_markdown = options.format == "markdown";
  const std::vector<std::string>& ids = options.ids;
  const bool is_all = ids.empty() || std::find(ids.begin(), ids.end(), kAll) != ids.end();
  if (const Rows about = is_all ? Rows() : RowsAbout(registry, ids); !about.empty()) {
    support::PrintOut(diagnostics::MessageList(about));
    return support::ExitStatus::kDone;
  }
  const Rows rows = is_all ? registry.rows() : RowsOf(registry, ids);
  if (is_markdown && is_all) {
    support::PrintOut(diagnostics::MessagesMarkdown(registry));
  } else if (options.list || ids.empty()) {
    support::PrintOut(diagnostics::MessageList(rows));
  } else {
    support::PrintOut(Explanations(rows, is_markdown));
    if (is_all) support::PrintOut(diagnostics::MachineText());
  }
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpExplain(Arguments& arguments) {
  const auto options = std::make_shared<ExplainOptions>();
  arguments.Add(
      "ID", &options->ids,
      "Message ids, as shown in [brackets] at the end of messages; a word to search for; or "
      "all (default: list the messages)");
  arguments.Add("--format", &options->format, "text (default) or markdown")
      .OneOf("FORMAT", {"text", "markdown"});
  arguments
      .Add("-l,--list", &options->list, "List messages, one per line, instead of explaining them")
      .Without({"--format"});
  arguments.Footer("Examples:\n  rux explain undefined-word\n  rux explain threshold");
  return [options] { return Explain(*options); };
}

}  // namespace rux::tool
