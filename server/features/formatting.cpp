// textDocument/formatting, rangeFormatting, onTypeFormatting: what rux fmt changes, as edits.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/analysis.h"
#include "findings/message_row.h"
#include "format/format.h"
#include "format/line_edits.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"
#include "support/safe_text.h"
#include "support/text_file.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using format::LineEdit;
using protocol::Json;

bool HasErrors(const Session& session, const workspace::Document& document) {
  const auto findings = session.analysis.FindingsIn(document.whole_name());
  return std::any_of(findings.begin(), findings.end(), [](const auto& located) {
    return located.finding->severity ==
           static_cast<std::uint8_t>(ruxcomp::findings::Severity::kError);
  });
}

void ShowRefusal(const Session& session, const workspace::Document& document,
                 const std::string& reason) {
  constexpr int kWarning = 2;
  const std::string name = std::filesystem::path(document.path()).filename().string();
  session.client.Notify(
      "window/showMessage",
      {{"type", kWarning},
       {"message", support::SafeText(name) + " stays as it is: " + support::SafeText(reason)}});
}

// None when the text has errors; the client is shown which.
std::optional<std::vector<LineEdit>> EditsOf(const Session& session,
                                             const workspace::Document& document) {
  const format::Formatted formatted = format::Format(document.text());
  if (formatted.refusal) {
    const format::Refusal& refusal = *formatted.refusal;
    ShowRefusal(session, document, "line " + std::to_string(refusal.line) + ": " + refusal.reason);
    return std::nullopt;
  }
  if (HasErrors(session, document)) {
    ShowRefusal(session, document, "it has errors");
    return std::nullopt;
  }
  return format::LineEdits(document.text(), formatted.text);
}

Json EditJson(const Session& session, const workspace::Document& document, const LineEdit& edit) {
  return TextEditJson(document.lines().RangeOf(edit.bytes, session.encoding), edit.text);
}

// Those that touch the bytes; all without them.
Json EditsJson(const Session& session, const workspace::Document& document,
               const std::vector<LineEdit>& edits, const support::ByteRange& within) {
  Json list = Json::array();
  for (const LineEdit& edit : edits) {
    if (edit.bytes.begin > within.end || edit.bytes.end < within.begin) continue;
    list.push_back(EditJson(session, document, edit));
  }
  return list;
}

Json FormattingOf(const Session& session, const Json& params) {
  const workspace::Document& document = session.DocumentOf(params);
  const auto edits = EditsOf(session, document);
  if (!edits) return nullptr;
  const auto size = static_cast<std::uint32_t>(document.text().size());
  return EditsJson(session, document, *edits, {0, size});
}

// From the beginning of the first line to the end of the last one.
support::ByteRange WholeLines(const std::string& text, support::ByteRange range) {
  const std::size_t before =
      range.begin == 0 ? std::string::npos : text.rfind('\n', range.begin - 1);
  const std::size_t after = std::min(text.find('\n', range.end), text.size());
  return {static_cast<std::uint32_t>(before + 1), static_cast<std::uint32_t>(after)};
}

Json RangeFormattingOf(const Session& session, const Json& params) {
  const workspace::Document& document = session.DocumentOf(params);
  const auto range = protocol::Required<protocol::Range>(params, "range");
  const auto edits = EditsOf(session, document);
  if (!edits) return nullptr;
  const support::ByteRange bytes = document.lines().BytesOf(range, session.encoding);
  return EditsJson(session, document, *edits, WholeLines(document.text(), bytes));
}

// The lines around the place up to those that are empty.
support::ByteRange RunAround(const std::string& text, std::uint32_t begin, std::uint32_t end) {
  const std::string_view view = text;
  const auto is_empty = [](std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
  };
  while (begin > 0) {
    const std::size_t before = begin == 1 ? std::string::npos : view.rfind('\n', begin - 2);
    if (is_empty(view.substr(before + 1, begin - before - 2))) break;
    begin = static_cast<std::uint32_t>(before + 1);
  }
  while (end < view.size()) {
    const std::size_t after = std::min(view.find('\n', end + 1), view.size());
    if (is_empty(view.substr(end + 1, after - end - 1))) break;
    end = static_cast<std::uint32_t>(after);
  }
  return {begin, end};
}

// The line that one begins to write is not there yet: a comment in its place keeps those above and
// below it together. What has errors stays as it is, while it is being written.
Json OnTypeFormattingOf(const Session& session, const Json& params) {
  const workspace::Document& document = session.DocumentOf(params);
  const auto position = protocol::Required<protocol::Position>(params, "position");
  const auto at = static_cast<std::uint32_t>(document.lines().OffsetOf(position, session.encoding));
  const support::ByteRange line = WholeLines(document.text(), {at, at});
  std::string text = document.text();
  for (std::uint32_t i = line.begin; i < line.end; ++i) {
    if (text[i] != ' ' && text[i] != '\t' && text[i] != '\r') return Json::array();
  }
  text.insert(line.begin, 1, '#');
  const format::Formatted formatted = format::Format(text);
  if (formatted.refusal) return Json::array();
  std::vector<LineEdit> edits;
  for (LineEdit& edit : format::LineEdits(text, formatted.text)) {
    if (edit.bytes.begin >= line.begin && edit.bytes.begin <= line.end + 1) continue;
    const std::uint32_t moved = edit.bytes.begin > line.begin ? 1 : 0;
    edit.bytes = {edit.bytes.begin - moved, edit.bytes.end - moved};
    edits.push_back(std::move(edit));
  }
  return EditsJson(session, document, edits, RunAround(document.text(), line.begin, line.end));
}

}  // namespace

Feature Formatting() {
  return {"documentFormattingProvider",
          true,
          {{"textDocument/formatting", Timing::kWithFindings, FormattingOf}}};
}

Feature RangeFormatting() {
  return {"documentRangeFormattingProvider",
          true,
          {{"textDocument/rangeFormatting", Timing::kWithFindings, RangeFormattingOf}}};
}

Feature OnTypeFormatting() {
  return {"documentOnTypeFormattingProvider",
          {{"firstTriggerCharacter", "\n"}},
          {{"textDocument/onTypeFormatting", Timing::kAtOnce, OnTypeFormattingOf}}};
}

}  // namespace rux::server
