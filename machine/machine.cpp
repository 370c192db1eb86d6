#include "machine/machine.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "machine/meta_model.h"
#include "machine/origins.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "settings/limit_rule.h"
#include "settings/project.h"
#include "support/number_text.h"

namespace rux::machine {
namespace {

namespace language = ruxcomp::language;

bool Fits(const settings::LimitRule& rule, const ruxcomp::Section& sensor) {
  const ruxcomp::Value type = sensor.entry(RUX_ENTRY_TYPE).value();
  return settings::Fits(rule, sensor.name(),
                        type ? std::optional<std::uint64_t>(type.number()) : std::nullopt);
}

// Empty when the sensor does not have it.
std::string PropertyOf(const ruxcomp::Section& sensor, const std::string& name) {
  if (name.empty()) return "";
  for (const ruxcomp::Entry entry : sensor.entries()) {
    const bool is_property = language::ClassOf(entry.identifier()) == language::CLASS_Property;
    if (is_property && entry.name() == name) return std::string(entry.value().text());
  }
  return "";
}

std::string FirstOf(const std::string& own, const std::string& common) {
  return own.empty() ? common : own;
}

void Complete(Quantity& quantity, const settings::LimitRule& rule, const ruxcomp::Section& sensor) {
  if (!quantity.unit) {
    const std::string unit = FirstOf(PropertyOf(sensor, rule.unit_property), rule.unit);
    if (!unit.empty()) quantity.unit = unit;
  }
  if (!quantity.divisor) {
    const std::string own = PropertyOf(sensor, rule.divisor_property);
    const std::uint64_t divisor = own.empty() ? rule.divisor : language::ReadNumber(own).value;
    if (divisor != 0) quantity.divisor = divisor;
  }
  if (!quantity.is_signed) {
    quantity.is_signed = settings::IsSigned(rule, PropertyOf(sensor, rule.sign_property));
  }
}

// Exactly, where a few decimals do, and otherwise with so many that each number has a text of its
// own.
std::string QuotientText(std::int64_t number, std::uint64_t divisor) {
  const auto magnitude = static_cast<std::uint64_t>(number < 0 ? -number : number);
  std::string text = (number < 0 ? "-" : "") + std::to_string(magnitude / divisor);
  std::uint64_t rest = magnitude % divisor;
  constexpr std::size_t kMostDecimals = 10;
  for (std::size_t i = 0; rest != 0 && i < kMostDecimals; ++i) {
    if (i == 0) text += '.';
    text += static_cast<char>('0' + rest * 10 / divisor);
    rest = rest * 10 % divisor;
  }
  return text;
}

}  // namespace

std::string Quantity::TextOf(std::uint32_t number) const {
  const std::string after = unit ? ' ' + *unit : "";
  if (!is_signed && number >> 31 != 0) return support::NumberText(number) + after;
  return AmountText(number) + after;
}

std::string Quantity::AmountText(std::uint32_t number) const {
  const std::int64_t amount = is_signed.value_or(false) ? static_cast<std::int32_t>(number)
                                                        : static_cast<std::int64_t>(number);
  return QuotientText(amount, divisor.value_or(1));
}

Machine::Machine(std::string name, std::unique_ptr<ruxcomp::file::KeptBytes> bytes,
                 std::unique_ptr<const Origins> origins,
                 std::shared_ptr<const settings::Project> project)
    : name_(std::move(name)),
      bytes_(std::move(bytes)),
      model_(OpenModel(name_, bytes_->view())),
      origins_(std::move(origins)),
      project_(std::move(project)) {}

Quantity Machine::QuantityOf(const ruxcomp::Section& sensor) const {
  Quantity quantity;
  if (project_ == nullptr) return quantity;
  for (const settings::LimitRule& rule : project_->limits) {
    if (Fits(rule, sensor)) Complete(quantity, rule, sensor);
  }
  return quantity;
}

}  // namespace rux::machine
