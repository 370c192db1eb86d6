#include "imports/sections.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "imports/board.h"
#include "imports/decimal.h"
#include "imports/names.h"
#include "imports/scale.h"
#include "imports/script_text.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/spelling.h"

namespace rux::imports {
namespace {

// As people list them.
constexpr language::EntryId kLimitsDownwards[] = {
    language::ENTRY_THEORY, language::ENTRY_THRESHOLD_FH, language::ENTRY_THRESHOLD_WH,
    language::ENTRY_THRESHOLD_WL, language::ENTRY_THRESHOLD_FL};

std::string PropertyKey(std::string_view name) {
  return std::string(language::kPropertyPrefix).append(name);
}

std::string UnitOf(const Sensor& sensor) {
  return sensor.unit.text.empty() ? std::string(RowOf(sensor.quantity).unit) : sensor.unit.text;
}

}  // namespace

void SectionWriter::Settle(const Text& source, const std::string& written, losses::Reason reason) {
  if (source.item == losses::kNoItem) return;
  if (ledger_.ItemOf(source.item).value == written)
    ledger_.Used(source.item);
  else
    ledger_.Changed(source.item, written, reason);
}

void SectionWriter::SettleName(const Text& source, const std::string& written) {
  // What is called otherwise has its name as P_LABEL or in the comment above.
  const std::string shown = PlainText(source.text);
  if (shown == source.text)
    Settle(source, written, losses::Reason::kRenamed);
  else
    Settle(source, shown, losses::Reason::kSimplified);
}

void SectionWriter::Comment(const Origin& origin, std::string_view name) {
  if (sources_.empty()) return;
  std::string text = sources_[origin.file];
  if (origin.line != 0) text += ':' + std::to_string(origin.line);
  text += fmt::format(": {}", name);
  if (!origin.path.empty()) text += fmt::format(" ({})", origin.path);
  script_.Comment(PlainText(text));
}

void SectionWriter::BeginKeys(std::initializer_list<const char*> taken) {
  keys_ = Names();
  for (const char* key : taken) keys_.TakeAsItIs(key);
}

void SectionWriter::Write(std::string_view prefix, const std::vector<Property>& properties) {
  for (const Property& property : properties) {
    const std::string value = PlainText(property.value.text);
    const std::string legal = LegalKey(property.key);
    if (value.empty() || legal.empty()) {
      ledger_.Dropped(property.value.item, losses::Reason::kNoPlace);
      continue;
    }
    const std::string key = keys_.TakeAsItIs(legal);
    script_.Entry(std::string(prefix) + key, value);
    Settle(property.value, value, losses::Reason::kSimplified);
  }
}

void SectionWriter::WriteNumber(const Sensor& sensor, language::EntryId entry,
                                const std::string& otherwise) {
  std::string text = otherwise;
  for (const Number& number : sensor.numbers) {
    if (number.entry != entry) continue;
    const std::optional<Decimal> amount = Decimal::In(number.value.text);
    const std::optional<std::string> written =
        amount ? NumberFor(*amount, {0, false}) : std::nullopt;
    if (!written) {
      ledger_.Dropped(number.value.item, losses::Reason::kDoesNotFit);
      continue;
    }
    text = *written;
    Settle(number.value, text, losses::Reason::kRewritten);
  }
  script_.Entry(language::KeywordOf(entry), text);
}

void SectionWriter::WriteLimits(const Sensor& sensor, const ScaledLimits& scaled) {
  const bool is_scaled = scaled.scale.power != 0;
  const std::string divisor = fmt::format("1{:0<{}}", "", scaled.scale.power);
  std::vector<std::string> numbers(sensor.limits.size());
  std::size_t width = 0;
  for (const std::size_t place : scaled.fitting) {
    numbers[place] = *NumberFor(sensor.limits[place].amount, scaled.scale);
    width = std::max(width, numbers[place].size());
  }
  for (const language::EntryId entry : kLimitsDownwards) {
    for (const std::size_t place : scaled.fitting) {
      const Limit& limit = sensor.limits[place];
      if (limit.entry != entry) continue;
      const std::string_view key = language::KeywordOf(entry);
      if (is_scaled) {
        script_.Entry(key, numbers[place], limit.amount.Text(), width);
        Settle({"", limit.item}, numbers[place] + " / " + divisor, losses::Reason::kScaled);
      } else {
        script_.Entry(key, numbers[place]);
        SettleNumber(limit, numbers[place]);
      }
    }
  }
  for (std::size_t i = 0; i < sensor.limits.size(); ++i) {
    if (numbers[i].empty()) DropLimit(sensor.limits[i], losses::Reason::kDoesNotFit, ledger_);
  }
  script_.Entry("VALUE", "VT_NONE");
  WriteUnit(sensor);
  if (is_scaled) script_.Entry(PropertyKey(kDivisorProperty), divisor);
  if (!scaled.scale.is_signed) script_.Entry(PropertyKey(kSignProperty), "unsigned");
}

// The same number is the same, however it is written.
void SectionWriter::SettleNumber(const Limit& limit, const std::string& written) {
  if (limit.item == losses::kNoItem) return;
  const std::optional<Decimal> before = Decimal::In(ledger_.ItemOf(limit.item).value);
  if (before && *before == limit.amount)
    ledger_.Used(limit.item);
  else
    ledger_.Changed(limit.item, written, losses::Reason::kRewritten);
}

void SectionWriter::WriteUnit(const Sensor& sensor) {
  const std::string unit = PlainText(UnitOf(sensor));
  if (!unit.empty()) script_.Entry(PropertyKey(kUnitProperty), unit);
  Settle(sensor.unit, unit, losses::Reason::kSimplified);
}

void SectionWriter::Write(const Sensor& sensor, const SensorPlace& place) {
  BeginKeys({kUnitProperty, kDivisorProperty, kSignProperty, kDeviceProperty, kLabelProperty});
  Comment(sensor.origin, sensor.comment.empty() ? sensor.name.text : sensor.comment);
  script_.Section("SENSOR");
  script_.Entry("NAME", place.name);
  script_.Entry("ID", HexText(place.id));
  script_.Entry("PARENT", place.area);
  const QuantityRow& quantity = RowOf(sensor.quantity);
  WriteNumber(sensor, language::ENTRY_TYPE, std::string(quantity.word));
  WriteNumber(sensor, language::ENTRY_INITFLAG, "0");
  WriteNumber(sensor, language::ENTRY_CONTROLMASK, "0");
  const ScaledLimits scaled = ScaleFor(sensor.limits);
  WriteLimits(sensor, scaled);
  if (!place.device.empty()) script_.Entry(PropertyKey(kDeviceProperty), place.device);
  const std::string label = PlainText(sensor.name.text);
  if (label != place.name && !label.empty()) script_.Entry(PropertyKey(kLabelProperty), label);
  Write(language::kPropertyPrefix, sensor.properties);
  for (const std::size_t fitting : scaled.fitting) {
    const Limit& limit = sensor.limits[fitting];
    for (const losses::ItemId part : limit.parts) ledger_.Used(part);
    Write(language::kPropertyPrefix, limit.properties);
  }
  SettleName(sensor.name, place.name);
}

void SectionWriter::Write(const Device& device, const std::string& name, std::uint32_t id) {
  BeginKeys({kLabelProperty});
  Comment(device.origin, device.name.text);
  script_.Section("DEVICE");
  script_.Entry("NAME", name);
  script_.Entry("ID", HexText(id));
  script_.Entry("INITFLAG", "0");
  script_.Entry("CONTROLMASK", "0");
  const std::string label = PlainText(device.name.text);
  if (label != name && !label.empty()) script_.Entry(PropertyKey(kLabelProperty), label);
  Write(language::kPropertyPrefix, device.properties);
  SettleName(device.name, name);
}

}  // namespace rux::imports
