#include "tests/findings/recorder.h"

namespace {

using ruxcomp::findings::MessageId;
using ruxcomp::findings::Origin;

struct Row {
  const char* name;
  std::string format;
};

const Row& RowOf(MessageId id) {
  static const Row rows[] = {
#define MESSAGE(name, format, ...) {#name, format},
#include "findings/messages.def"
  };
  return rows[static_cast<std::size_t>(id)];
}

std::string ArgumentText(const ruxcomp::findings::Argument& argument) {
  if (const auto* text = std::get_if<std::string_view>(&argument)) return std::string(*text);
  return std::to_string(std::get<std::uint32_t>(argument));
}

}  // namespace

std::string OriginText(const Origin& origin) {
  std::string text;
  for (const std::uint32_t ordinal : {origin.script, origin.section, origin.item, origin.part}) {
    if (ordinal == Origin::kNone) break;
    text += (text.empty() ? "" : "/") + (ordinal == Origin::kKey ? "key" : std::to_string(ordinal));
  }
  return text.empty() ? "-" : text;
}

std::string FindingText(const ruxcomp::findings::Finding& finding) {
  std::string text = RowOf(finding.message).name + std::string("(");
  for (std::size_t i = 0; i < finding.arguments.size(); ++i) {
    text += (i == 0 ? "" : ", ") + ArgumentText(finding.arguments[i]);
  }
  text += ")";
  if (finding.place) {
    text += " in " + std::string(finding.place->file) + ":" + std::to_string(finding.place->line);
  }
  text += " at " + OriginText(finding.origin);
  if (finding.other != Origin()) text += ", other " + OriginText(finding.other);
  return text;
}

std::string MessageText(const ruxcomp::findings::Finding& finding) {
  std::string text = RowOf(finding.message).format;
  std::size_t at = 0;
  for (const ruxcomp::findings::Argument& argument : finding.arguments) {
    at = text.find('%', at);
    const bool isText = std::holds_alternative<std::string_view>(argument);
    if (at == std::string::npos || text[at + 1] != (isText ? 's' : 'u')) return "no such argument";
    const std::string shown = ArgumentText(argument);
    text.replace(at, 2, shown);
    at += shown.size();
  }
  return text;
}

void Recorder::Take(const ruxcomp::findings::Finding& finding) {
  seen.insert(finding.message);
  messages.push_back(MessageText(finding));
  if (finding.message != MessageId::kEndOfScript) findings.push_back(FindingText(finding));
}
