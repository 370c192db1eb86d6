#include "diagnostics/messages/messages.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

#include "support/nearest.h"

namespace rux::diagnostics {
namespace {

constexpr MessageRow Row(MessageId number, std::string_view id, Severity severity,
                         std::string_view text, std::string_view summary,
                         std::string_view explanation, std::string_view wrong,
                         std::string_view right) {
  return {number, id, severity, text, summary, explanation, wrong, right};
}

constexpr Severity kNote = Severity::kNote;
constexpr Severity kWarning = Severity::kWarning;
constexpr Severity kError = Severity::kError;

constexpr MessageRow kRows[] = {
#define ROW(name, id, severity, text, summary, explanation, wrong, right) \
  Row(MessageId::k##name, id, severity, text, summary, explanation, wrong, right),
#include "diagnostics/messages/message_rows.def"
};

constexpr std::size_t RowsWith(std::string_view text) {
  std::size_t count = 0;
  for (const MessageRow& row : kRows) count += row.text == text ? 1 : 0;
  return count;
}

// Every message of the library has one row, and is found by its text.
#define MESSAGE(name, format, ...) static_assert(RowsWith(format) == 1, #name " needs one row");
#include "findings/messages.def"

std::vector<MessageRow>& AllRows() {
  static std::vector<MessageRow> rows(std::begin(kRows), std::end(kRows));
  return rows;
}

using Index = std::unordered_map<std::string_view, const MessageRow*>;

Index IndexBy(std::string_view MessageRow::*column) {
  Index index;
  for (const MessageRow& row : MessageRows()) {
    if (!(row.*column).empty()) index.emplace(row.*column, &row);
  }
  return index;
}

const MessageRow* Find(const Index& index, std::string_view wanted) {
  const auto found = index.find(wanted);
  return found == index.end() ? nullptr : found->second;
}

}  // namespace

const std::string_view kMachineScript = R"([MORVRUX]
VERSION = 1.0
[DEFINE]
VT_CONST      = 1
VT_CALC       = 2
VT_CALL       = 3
VT_TABLE      = 10
VT_SMBUS_READ = 12
BUSTYPE_SMBUS = 2
[SYSTEM]
TYPE    = 1
MODEL   = Board
FLAG    = 0
RUXLOOP = 1000
[GROUP]
PARENT     = 0
NAME       = BOARD
CHILDGROUP = 0
[PELMGROUP]
NAME    = EVENTS
ID      = 1
PID     = 0
SENSORS = 0x101
[SENSOR]
PARENT       = BOARD
NAME         = INLET
ID           = 0x101
TYPE         = 1
INITFLAG     = 3
CONTROLMASK  = 0
VALUE        = VT_SMBUS_READ, 0x4800, 1, BUSTYPE_SMBUS, 0x00
)";

const std::vector<MessageRow>& MessageRows() { return AllRows(); }

void AddMessageRows(const std::vector<MessageRow>& rows) {
  AllRows().insert(AllRows().end(), rows.begin(), rows.end());
}

const MessageRow& RowOf(MessageId message) { return AllRows()[static_cast<std::size_t>(message)]; }

const MessageRow* FindMessageByText(std::string_view text) {
  static const Index index = IndexBy(&MessageRow::text);
  return Find(index, text);
}

const MessageRow* FindMessageById(std::string_view id) {
  static const Index index = IndexBy(&MessageRow::id);
  return Find(index, id);
}

std::string UnknownMessageText(const std::string& id) {
  std::vector<std::string> ids;
  for (const MessageRow& row : MessageRows()) ids.emplace_back(row.id);
  return "there is no message " + support::NameText(id) + support::NearText(id, ids);
}

}  // namespace rux::diagnostics
