#include "imports/board.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "imports/decimal.h"
#include "lists/units.h"
#include "losses/ledger.h"

namespace rux::imports {

std::optional<Quantity> FindQuantity(std::string_view id) {
  for (std::size_t i = 0; i < std::size(kQuantities); ++i) {
    if (kQuantities[i].id == id) return static_cast<Quantity>(i);
  }
  return std::nullopt;
}

Quantity QuantityIn(std::string_view unit) {
  if (unit.empty()) return Quantity::kOther;
  std::size_t place = 0;
  for (const QuantityRow& row : kQuantities) {
    if (!row.unit.empty() && lists::UnitFactor(unit, row.unit)) return static_cast<Quantity>(place);
    ++place;
  }
  return Quantity::kOther;
}

losses::Reason WhyNoDecimal(std::string_view text) {
  return Decimal::IsNumber(text) ? losses::Reason::kDoesNotFit : losses::Reason::kNotANumber;
}

void DropLimit(const Limit& limit, losses::Reason reason, losses::Ledger& ledger) {
  ledger.Dropped(limit.item, reason);
  for (const losses::ItemId part : limit.parts) ledger.Dropped(part, reason);
  for (const Property& property : limit.properties) ledger.Dropped(property.value.item, reason);
}

std::optional<losses::Reason> AddLimit(Sensor& sensor, Limit limit, losses::Ledger& ledger) {
  const bool is_taken = std::any_of(sensor.limits.begin(), sensor.limits.end(),
                                    [&](const Limit& other) { return other.entry == limit.entry; });
  if (is_taken) {
    DropLimit(limit, losses::Reason::kDuplicate, ledger);
    return losses::Reason::kDuplicate;
  }
  sensor.limits.push_back(std::move(limit));
  return std::nullopt;
}

std::optional<losses::Reason> AddLimit(Sensor& sensor, Limit limit, std::string_view number,
                                       losses::Ledger& ledger) {
  const std::optional<Decimal> amount = Decimal::In(number);
  if (!amount) {
    DropLimit(limit, WhyNoDecimal(number), ledger);
    return WhyNoDecimal(number);
  }
  limit.amount = *amount;
  return AddLimit(sensor, std::move(limit), ledger);
}

std::size_t Board::AreaFor(const Text& title, std::optional<std::size_t> parent,
                           const Origin& from) {
  const auto [found, is_new] = places_.try_emplace({parent, title.text}, areas.size());
  if (is_new) areas.push_back({title, parent, from});
  return found->second;
}

std::size_t Board::AreaOf(std::string_view path, const Origin& from) {
  std::optional<std::size_t> area;
  while (true) {
    const std::size_t slash = path.find('/');
    area = AreaFor({std::string(path.substr(0, slash)), losses::kNoItem}, area, from);
    if (slash == std::string_view::npos) return *area;
    path.remove_prefix(slash + 1);
  }
}

}  // namespace rux::imports
