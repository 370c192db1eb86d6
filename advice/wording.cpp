#include "advice/wording.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "findings/wording.h"
#include "reader/script.h"
#include "reader/value.h"
#include "rules/defined_words.h"
#include "rules/wording.h"
#include "ruxcomp/language/values.h"
#include "sources/source_set.h"
#include "support/safe_text.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;

std::string WithNoun(const std::string& count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == "1" ? "" : "s");
}

}  // namespace

std::string Shown(const diagnostics::Argument& argument) {
  // Values may be as long as a script; the line that is shown below says more of them.
  if (const auto* text = std::get_if<std::string>(&argument)) return support::Shortened(*text);
  return std::to_string(std::get<std::uint32_t>(argument));
}

std::optional<std::string> Wordings::TextOf(const diagnostics::Diagnostic& diagnostic) {
  std::string text;
  for (std::string_view rest = diagnostic.row->wording; !rest.empty();) {
    const ruxcomp::findings::WordingPiece piece = ruxcomp::findings::TakePiece(rest);
    text += piece.text;
    if (piece.name.empty()) continue;
    const std::optional<std::string> found = Find(diagnostic, piece.name);
    if (!found) return std::nullopt;
    text += piece.noun.empty() ? *found : WithNoun(*found, piece.noun);
  }
  return text;
}

std::optional<std::string> Wordings::Find(const diagnostics::Diagnostic& diagnostic,
                                          std::string_view name) {
  if (name == "section") return support::Shortened(*diagnostic.section);
  if (!ruxcomp::findings::IsOrdinal(name)) return FindFact(diagnostic, name);
  return Shown(diagnostic.arguments[static_cast<std::size_t>(name.front() - '0')]);
}

std::optional<std::string> Wordings::FindFact(const diagnostics::Diagnostic& diagnostic,
                                              std::string_view name) {
  if (diagnostic.at.file == nullptr) return std::nullopt;
  const ruxcomp::reader::Item* item = sources_.At(diagnostic.origin).item;
  if (item == nullptr) return std::nullopt;
  const std::vector<std::string_view> parts = ruxcomp::reader::Parts(*item);
  if (name == "found") return std::to_string(parts.size());
  const auto code = parts.empty() ? std::nullopt : words().Find(parts.front());
  if (!code) return std::nullopt;
  const std::string_view second = parts.size() > 1 ? parts[1] : std::string_view();
  return rules::PartsText(language::TypeFor(*code, second));
}

const rules::DefinedWords& Wordings::words() {
  if (!words_) words_.emplace(sources_, unread_);
  return *words_;
}

}  // namespace rux::advice
