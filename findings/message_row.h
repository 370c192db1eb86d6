// What is known of a message, for those who show and explain messages.
#ifndef FINDINGS_MESSAGE_ROW_H_
#define FINDINGS_MESSAGE_ROW_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/rows.h"

namespace ruxcomp::findings {

enum class Severity : std::uint8_t { kNote, kWarning, kError };

constexpr std::string_view WordOf(Severity severity) {
  constexpr std::string_view kWords[] = {"note", "warning", "error"};
  return kWords[static_cast<std::size_t>(severity)];
}

// How much a message matters. Those in between are the groups of warnings.
enum class Level : std::uint8_t {
  kNote,
  kStyle,    // a matter of opinion, or of what the firmware does
  kSuspect,  // nothing is lost, but it is hardly meant
  kLoss,     // something is dropped, or compiled differently from what is written
  kError,
};

constexpr std::string_view WordOf(Level level) {
  constexpr std::string_view kWords[] = {"note", "style", "suspect", "loss", "error"};
  return kWords[static_cast<std::size_t>(level)];
}

constexpr Severity SeverityOf(Level level) {
  if (level == Level::kNote) return Severity::kNote;
  return level == Level::kError ? Severity::kError : Severity::kWarning;
}

// What a format begins with, such as "Error[%s:%u]: [%s]:%s, ": the place, and the names of the
// section and of the entry.
struct Lead {
  bool is_error = false;  // it begins with "Error"
  bool has_place = false;
  bool has_section = false;
  bool has_entry = false;
  std::string_view rest;  // what follows, without a line feed at the end

  constexpr std::size_t arguments() const {
    return (has_place ? 2U : 0U) + (has_section ? 1U : 0U) + (has_entry ? 1U : 0U);
  }
};

constexpr bool Skip(std::string_view& text, std::string_view beginning) {
  if (text.substr(0, beginning.size()) != beginning) return false;
  text.remove_prefix(beginning.size());
  return true;
}

constexpr Lead LeadOf(std::string_view format) {
  Lead lead;
  if (!format.empty() && format.back() == '\n') format.remove_suffix(1);
  lead.is_error = Skip(format, "Error");
  if (lead.is_error || Skip(format, "Warning")) {
    lead.has_place = Skip(format, "[%s:%u]");
    // Formats separate the parts by a colon or a comma, with or without a blank.
    if (!Skip(format, ":")) Skip(format, ",");
    Skip(format, " ");
    lead.has_section = Skip(format, "[%s]");
    lead.has_entry = lead.has_section && Skip(format, ":%s");
    Skip(format, ",");
    Skip(format, " ");
  } else {
    Skip(format, "ERROR: ");
  }
  lead.rest = format;
  return lead;
}

// There is one object of each message: its address identifies the message.
struct MessageRow {
  std::string_view format;  // of messages of the library and its reader; "" for others
  std::string_view id;      // "undefined-word"
  Level level;              // of a script without other problems
  std::string_view summary;
  std::string_view explanation;
  std::string_view wrong;
  std::string_view right;
  std::string_view wording = {};  // what rux says instead of the format's rest (wording.h)
  Lead lead = LeadOf(format);
  Severity severity = SeverityOf(level);

  // It is an error to people, who may have it as a warning: the library calls it one.
  constexpr bool may_be_lowered() const {
    return severity == Severity::kError && !format.empty() && !lead.is_error && lead.has_place;
  }

  MessageRow(const MessageRow&) = delete;
  MessageRow& operator=(const MessageRow&) = delete;
};

// The messages of a room.
using MessageRows = ruxcomp::language::Rows<const MessageRow*>;

template <std::size_t Count>
constexpr MessageRows RowsOf(const MessageRow* const (&rows)[Count]) {
  return {rows, Count};
}

}  // namespace ruxcomp::findings

#endif  // FINDINGS_MESSAGE_ROW_H_
