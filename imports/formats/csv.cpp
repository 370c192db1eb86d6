// Sensors in rows and columns.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/decimal.h"
#include "imports/formats.h"
#include "imports/formats/readers.h"
#include "imports/names.h"
#include "lists/formats.h"
#include "lists/list.h"
#include "lists/units.h"
#include "losses/ledger.h"
#include "reconcile/pairing.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "support/ascii.h"
#include "table/columns.h"

namespace rux::imports {
namespace {

constexpr std::string_view kGroupColumn = "group";
constexpr std::string_view kUnitKey = "UNIT";  // of a property, without P_
constexpr language::EntryId kPlainNumbers[] = {language::ENTRY_ID, language::ENTRY_TYPE,
                                               language::ENTRY_INITFLAG,
                                               language::ENTRY_CONTROLMASK};

// The number before a unit: "1.05 V".
std::pair<std::string_view, std::string_view> NumberAndUnit(std::string_view text) {
  text = lists::Trimmed(text);
  const std::size_t blank = text.find_first_of(" \t");
  // Digits after a blank are not a unit: "1 400".
  if (blank != std::string_view::npos &&
      support::IsDigit(text[text.find_first_not_of(" \t", blank)]))
    return {text, ""};
  if (blank != std::string_view::npos)
    return {text.substr(0, blank), lists::Trimmed(text.substr(blank))};
  // A unit may follow without a blank; an exponent is not a unit.
  const std::size_t end = text.find_last_of("0123456789.");
  if (end == std::string_view::npos || end + 1 == text.size()) return {text, ""};
  if (Decimal::In(text)) return {text, ""};
  return {text.substr(0, end + 1), text.substr(end + 1)};
}

// One row of a list. The limits come last: they are amounts in the unit of the sensor.
class RowReader {
 public:
  RowReader(const lists::Format& format, const lists::List& list, const lists::ListRow& row,
            const reconcile::Pairing& pairing, Board& board, losses::Ledger& ledger)
      : format_(format),
        list_(list),
        row_(row),
        pairing_(pairing),
        board_(board),
        ledger_(ledger),
        origin_{static_cast<std::uint32_t>(ledger.files().size() - 1), row.line, ""} {}

  void Read() {
    std::vector<Cell> limits;
    for (const lists::ListCell& listed : row_.cells) {
      const reconcile::ColumnPair* const pair = pairing_.FindPlace(listed.column);
      const std::string header = list_.columns[listed.column].substr(0, kMostNameBytes);
      Cell cell{{listed.text, ledger_.Note({row_.line, header, listed.text})}, pair};
      if (lists::IsNothing(cell.text.text)) {
        ledger_.Used(cell.text.item);
        continue;
      }
      if (pair == nullptr) {
        if (format_.HasOtherLimit(list_.columns[listed.column]))
          ledger_.Dropped(cell.text.item, losses::Reason::kNoSuchLimit);
        continue;
      }
      items_.push_back(cell.text.item);
      if (pair->column.is_limit() || IsTheory(pair->column))
        limits.push_back(std::move(cell));
      else
        Take(cell);
    }
    if (sensor_.name.text.empty()) {
      for (const losses::ItemId item : items_) ledger_.Dropped(item, losses::Reason::kNameless);
      return;
    }
    for (const Cell& cell : limits) TakeLimit(cell);
    if (sensor_.quantity == Quantity::kOther) sensor_.quantity = QuantityIn(sensor_.unit.text);
    sensor_.origin = origin_;
    sensor_.area = AreaIn(group_);
    board_.sensors.push_back(std::move(sensor_));
  }

 private:
  struct Cell {
    Text text;
    const reconcile::ColumnPair* pair;
  };

  static language::EntryId EntryOf(const table::Column& column) { return column.entry->source; }
  static bool IsTheory(const table::Column& column) {
    return column.entry != nullptr && column.entry->source == language::ENTRY_THEORY;
  }

  void Take(const Cell& cell) {
    const table::Column& column = cell.pair->column;
    if (column.name == table::kUnitColumn) {
      sensor_.unit = cell.text;
    } else if (column.name == kGroupColumn) {
      group_ = cell.text;
    } else if (column.entry == nullptr) {
      ledger_.Dropped(cell.text.item, losses::Reason::kNoPlace);
    } else {
      TakeEntry(cell);
    }
  }

  // What has a place of its own in a sensor; null: nothing has.
  Text* TextFor(language::EntryId entry, const std::string& key) {
    if (entry == language::ENTRY_NAME) return &sensor_.name;
    if (entry == language::ENTRY_PARENT) return &group_;
    return key == kUnitKey && sensor_.unit.text.empty() ? &sensor_.unit : nullptr;
  }

  void TakeEntry(const Cell& cell) {
    const language::EntryId entry = EntryOf(cell.pair->column);
    if (Text* const text = TextFor(entry, cell.pair->column.entry_name)) {
      *text = cell.text;
      return;
    }
    for (const language::EntryId number : kPlainNumbers) {
      if (number != entry) continue;
      const std::optional<Decimal> read = Decimal::In(lists::Trimmed(cell.text.text));
      if (!read || !read->WholeAt(0))
        return ledger_.Dropped(cell.text.item, losses::Reason::kNotANumber);
      sensor_.numbers.push_back({entry, cell.text});
      return;
    }
    if (!cell.pair->column.entry_name.empty() && cell.pair->column.is_text()) {
      sensor_.properties.push_back({cell.pair->column.entry_name, cell.text});
      return;
    }
    ledger_.Dropped(cell.text.item, losses::Reason::kNotPlain);
  }

  // The unit of a cell counts more than that of its column, and that more than the row's.
  void TakeLimit(const Cell& cell) {
    const losses::ItemId item = cell.text.item;
    const auto [number, written] = NumberAndUnit(cell.text.text);
    const std::string unit = written.empty() ? cell.pair->unit : std::string(written);
    std::optional<Decimal> amount = Decimal::In(number);
    if (!amount) return ledger_.Dropped(item, WhyNoDecimal(number));
    if (sensor_.unit.text.empty()) sensor_.unit.text = unit;
    if (!unit.empty()) {
      const std::optional<double> factor = lists::UnitFactor(unit, sensor_.unit.text);
      if (!factor) return ledger_.Dropped(item, losses::Reason::kOtherUnit);
      // Units of a kind differ by powers of ten.
      amount = amount->Times(Decimal(1, static_cast<int>(std::lround(std::log10(*factor)))));
      if (!amount) return ledger_.Dropped(item, losses::Reason::kDoesNotFit);
    }
    AddLimit(sensor_, Limit{EntryOf(cell.pair->column), *amount, item}, ledger_);
  }

  // The groups from the outermost: "BOARD/CPU0"; without any, that of the board.
  std::size_t AreaIn(const Text& path) {
    if (path.text.empty()) return board_.AreaFor({board_.name.text, losses::kNoItem}, {}, origin_);
    ledger_.Used(path.item);
    const bool is_path = path.text.find('/') != std::string::npos;
    return is_path ? board_.AreaOf(path.text, origin_) : board_.AreaFor(path, {}, origin_);
  }

  const lists::Format& format_;
  const lists::List& list_;
  const lists::ListRow& row_;
  const reconcile::Pairing& pairing_;
  Board& board_;
  losses::Ledger& ledger_;
  const Origin origin_;
  Sensor sensor_;
  Text group_;
  std::vector<losses::ItemId> items_;
};

}  // namespace

Board ReadCsvTable(const Sources& sources, const ReadOptions& options, losses::Ledger& ledger) {
  Board board;
  for (const Source& source : sources) {
    ledger.BeginFile(source.path);
    if (board.name.text.empty())
      board.name.text = std::filesystem::path(source.path).stem().string();
    const lists::Format& format = lists::FormatFor(options.list, source.text);
    const lists::List list = format.read(source.path, source.text);
    const reconcile::Pairing pairing = reconcile::PairColumns(*language::FindKind("SENSOR"), format,
                                                              source.path, list, options.columns);
    for (const lists::ListRow& row : list.rows)
      RowReader(format, list, row, pairing, board, ledger).Read();
  }
  return board;
}

}  // namespace rux::imports
