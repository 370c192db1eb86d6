#include "imports/board.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "imports/decimal.h"
#include "lists/units.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"

namespace rux::imports {

Quantity QuantityIn(std::string_view unit) {
  if (unit.empty()) return Quantity::kOther;
  std::size_t place = 0;
  for (const QuantityRow& row : kQuantities) {
    if (!row.unit.empty() && lists::UnitFactor(unit, row.unit)) return static_cast<Quantity>(place);
    ++place;
  }
  return Quantity::kOther;
}

void AddLimit(Sensor& sensor, const Limit& limit, losses::Ledger& ledger) {
  const bool is_taken = std::any_of(sensor.limits.begin(), sensor.limits.end(),
                                    [&](const Limit& other) { return other.entry == limit.entry; });
  if (is_taken) return ledger.Dropped(limit.item, losses::Reason::kDuplicate);
  sensor.limits.push_back(limit);
}

void AddLimit(Sensor& sensor, language::EntryId entry, std::string_view number, losses::ItemId item,
              losses::Ledger& ledger) {
  const std::optional<Decimal> amount = Decimal::In(number);
  if (!amount) return ledger.Dropped(item, losses::Reason::kNotANumber);
  AddLimit(sensor, {entry, *amount, item}, ledger);
}

std::size_t Board::AreaFor(const Text& title, std::optional<std::size_t> parent,
                           const Origin& origin) {
  const auto [found, is_new] = places_.try_emplace({parent, title.text}, areas.size());
  if (is_new) areas.push_back({title, parent, origin});
  return found->second;
}

std::size_t Board::AreaOf(std::string_view path, const Origin& origin) {
  std::optional<std::size_t> area;
  while (true) {
    const std::size_t slash = path.find('/');
    area = AreaFor({std::string(path.substr(0, slash)), losses::kNoItem}, area, origin);
    if (slash == std::string_view::npos) return *area;
    path.remove_prefix(slash + 1);
  }
}

}  // namespace rux::imports
