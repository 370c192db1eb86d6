#include "rules/wording.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "findings/message_row.h"
#include "findings/wording.h"
#include "ruxcomp/language/values.h"
#include "support/number_text.h"

namespace rux::rules {
namespace {

namespace language = ruxcomp::language;

std::string PartCount(const language::ValueType& type) {
  if (type.most == language::kAnyNumber) return fmt::format("at least {} parts", type.least);
  if (type.most != type.least) return fmt::format("{} to {} parts", type.least, type.most);
  return support::CountText(type.most, "part");
}

std::string PartNames(const language::ValueType& type) {
  std::string names = "type";
  std::uint32_t left = type.most - 1;
  for (const language::Field& field : type.fields) {
    if (left-- == 0) break;
    names += ", " + InWords(field.name);
  }
  return names;
}

}  // namespace

std::string InWords(std::string_view name) {
  std::string words;
  for (const char c : name) {
    const bool is_capital = c >= 'A' && c <= 'Z';
    if (is_capital && !words.empty()) words += ' ';
    words += is_capital ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return words;
}

std::string PartsText(const language::ValueType& type) {
  return fmt::format("{} ({})", PartCount(type), PartNames(type));
}

std::string Worded(const ruxcomp::findings::MessageRow& row, std::initializer_list<Fact> facts) {
  std::string text;
  for (std::string_view rest = row.wording; !rest.empty();) {
    const ruxcomp::findings::WordingPiece piece = ruxcomp::findings::TakePiece(rest);
    text += piece.text;
    const auto* fact = std::find_if(facts.begin(), facts.end(),
                                    [&](const Fact& each) { return each.name == piece.name; });
    if (fact != facts.end()) text += fact->text;
  }
  return text;
}

}  // namespace rux::rules
