// The texts for people: what rux says where the library's fixed text is meant for logs.
//
//   {0}           the first argument of the message after the place, the section and the entry
//   {1:argument}  a number with its noun: "1 argument", "2 arguments"
//   {section}     the name of the section; other names are facts about the value that the message
//                 is about: see advice/wording.h, or the rule that reports the message
#ifndef FINDINGS_WORDING_H_
#define FINDINGS_WORDING_H_

#include <cstddef>
#include <string_view>

#include "findings/message_row.h"

namespace ruxcomp::findings {

// A piece of a wording: text, then what is filled in.
struct WordingPiece {
  std::string_view text;
  std::string_view name;  // "0", "section"; empty at the end
  std::string_view noun;  // "argument"; empty without one
};

// Takes the next piece off a wording that is not empty.
constexpr WordingPiece TakePiece(std::string_view& wording) {
  const std::size_t open = wording.find('{');
  WordingPiece piece{wording.substr(0, open), {}, {}};
  if (open == std::string_view::npos) {
    wording = {};
    return piece;
  }
  const std::size_t close = wording.find('}', open);
  piece.name = wording.substr(open + 1, close - open - 1);
  const std::size_t colon = piece.name.find(':');
  if (colon != std::string_view::npos) {
    piece.noun = piece.name.substr(colon + 1);
    piece.name = piece.name.substr(0, colon);
  }
  wording.remove_prefix(close + 1);
  return piece;
}

constexpr bool IsOrdinal(std::string_view name) {
  return name.size() == 1 && name.front() >= '0' && name.front() <= '9';
}

// Whether there is a wording and the format has the arguments that it names.
constexpr bool FitsFormat(std::string_view wording, std::string_view format) {
  if (wording.empty()) return false;
  const Lead lead = LeadOf(format);
  std::size_t count = 0;
  for (const char c : lead.rest) count += c == '%' ? 1 : 0;
  while (!wording.empty()) {
    const WordingPiece piece = TakePiece(wording);
    if (piece.name == "section" && !lead.has_section) return false;
    if (IsOrdinal(piece.name) && static_cast<std::size_t>(piece.name.front() - '0') >= count) {
      return false;
    }
  }
  return true;
}

}  // namespace ruxcomp::findings

#endif  // FINDINGS_WORDING_H_
