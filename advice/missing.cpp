#include "advice/missing.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "advice/message_advice.h"
#include "findings/message_row.h"
#include "run/log.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"

namespace rux::advice {

namespace language = ruxcomp::language;

std::optional<Missing> MissingOf(const run::Finding& finding) {
  const Definition& definition = AdviceFor(finding.row).missing;
  const std::string_view text = Mentioned(finding);
  if (!definition.is_any() || text.empty()) return std::nullopt;
  return Missing{definition, text};
}

bool AreInOneSection(const run::Finding& one, const run::Finding& other) {
  return one.origin.script == other.origin.script && one.origin.section == other.origin.section;
}

std::string_view Mentioned(const run::Finding& finding) {
  const std::size_t at = finding.row->lead.arguments();
  if (at >= finding.arguments.size()) return {};
  const auto* text = std::get_if<std::string>(&finding.arguments[at]);
  return text == nullptr ? std::string_view() : *text;
}

std::string Comparable(language::EntryId entry, std::string_view text) {
  const bool is_number = language::IsNumericString(entry) || language::IsNumericList(entry);
  const language::Number number = is_number ? language::ReadNumber(text) : language::Number();
  return number.is_number ? std::to_string(number.value) : std::string(text);
}

}  // namespace rux::advice
