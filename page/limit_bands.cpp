#include "page/limit_bands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "machine/machine.h"
#include "page/html.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/language/sections.h"
#include "table/cell.h"
#include "table/columns.h"
#include "table/machine_table.h"

namespace rux::page {
namespace {

namespace language = ruxcomp::language;

constexpr int kWidth = 200;  // of a drawing
constexpr int kHeight = 16;

// The places of kLimitsUpwards.
enum Place : std::size_t { kFailedLow, kWarnLow, kTheory, kWarnHigh, kFailedHigh, kPlaces };
static_assert(sizeof language::kLimitsUpwards / sizeof *language::kLimitsUpwards == kPlaces);

// The columns of the limits, then TYPE and the unit.
std::vector<table::Column> Columns() {
  const language::SectionKind& kind = language::KindOf(language::SECTION_SENSOR);
  std::vector<table::Column> columns;
  for (const language::EntryId limit : language::kLimitsUpwards)
    columns.push_back(table::ColumnFor(kind, std::string(language::KeywordOf(limit))));
  columns.push_back(table::ColumnFor(kind, std::string(language::KeywordOf(language::ENTRY_TYPE))));
  columns.push_back(table::ColumnFor(kind, table::kUnitColumn));
  return columns;
}

// Whether the number is one without a sign or another one with it.
bool IsAmbiguous(const table::Row& row, const table::Cell& cell) {
  return cell.number && *cell.number >> 31 != 0 && !row.subject.quantity.is_signed;
}

std::string WhatOf(const table::Cell& type, const table::Cell& unit) {
  return unit.empty() ? "TYPE " + table::TextOf(type) : table::TextOf(unit);
}

// Amounts of very different sizes would not be seen beside each other: each power of ten has a
// scale of its own.
std::string ScaleOf(const std::string& what, double largest) {
  return fmt::format("{}, up to {:g}", what, std::pow(10, std::ceil(std::log10(largest))));
}

class Drawing {
 public:
  Drawing(const Scale& scale, Html& out) : scale_(scale), out_(out) {}

  void Write(const std::vector<std::optional<double>>& amounts) {
    out_ << "<svg viewBox=\"0 0 200 16\" aria-hidden=true>";
    const int failed_low = At(amounts[kFailedLow], 0);
    const int warn_low = std::max(At(amounts[kWarnLow], failed_low), failed_low);
    const int failed_high = At(amounts[kFailedHigh], kWidth);
    const int warn_high = std::min(At(amounts[kWarnHigh], failed_high), failed_high);
    Bar('f', 0, failed_low, 0);
    Bar('w', failed_low, warn_low, 2);
    Bar('o', warn_low, warn_high, 4);
    Bar('w', warn_high, failed_high, 2);
    Bar('f', failed_high, kWidth, 0);
    if (amounts[kTheory]) {
      const int at = std::min(At(amounts[kTheory], 0), kWidth - 2);
      out_ << "<path class=t d=\"M" << at << " 0h2v16h-2z\"/>";
    }
    out_ << "</svg>";
  }

 private:
  int At(const std::optional<double>& amount, int otherwise) const {
    if (!amount) return otherwise;
    const double part = (*amount - scale_.low) / (scale_.high - scale_.low);
    return static_cast<int>(std::lround(part * kWidth));
  }

  // Lower ones differ for those who do not see the colours.
  void Bar(char style, int from, int to, int inset) {
    if (to <= from) return;
    out_ << "<path class=";
    out_.Trusted({&style, 1}) << " d=\"M" << from << " " << inset << "H" << to << "V"
                              << kHeight - inset << "H" << from << "z\"/>";
  }

  const Scale& scale_;
  Html& out_;
};

}  // namespace

std::string ScaleEnd(double amount) {
  constexpr double kWithoutFraction = 100;
  return std::abs(amount) < kWithoutFraction ? fmt::format("{:.3g}", amount)
                                             : fmt::format("{:.0f}", amount);
}

LimitBands::LimitBands(const machine::Machine& machine) {
  const table::MachineTable table =
      table::MakeTable(machine, language::KindOf(language::SECTION_SENSOR), Columns());
  for (const table::Row& row : table.rows) {
    Limits limits;
    bool is_known = false;
    bool is_ambiguous = false;
    double largest = 1;
    for (std::size_t i = 0; i < kPlaces; ++i) {
      const table::Cell& cell = table::CellIn(row.cells, i);
      is_ambiguous = is_ambiguous || IsAmbiguous(row, cell);
      limits.amounts.push_back(cell.number
                                   ? table::NumberIn(row.subject.quantity.AmountText(*cell.number))
                                   : std::nullopt);
      largest = std::max(largest, std::abs(limits.amounts.back().value_or(0)));
      is_known = is_known || (limits.amounts.back() && i != kTheory);
    }
    limits.what = WhatOf(table::CellIn(row.cells, kPlaces), table::CellIn(row.cells, kPlaces + 1));
    if (is_known && !is_ambiguous) limits.scale = ScaleOf(limits.what, largest);
    sensors_.push_back(std::move(limits));
  }
  for (const Limits& limits : sensors_) {
    if (limits.scale.empty()) continue;
    Scale& scale = scales_.try_emplace(limits.scale, Scale{limits.what, 0, 0, 0}).first->second;
    ++scale.sensors;
    for (const std::optional<double>& amount : limits.amounts) {
      if (!amount) continue;
      scale.low = std::min(scale.low, *amount);
      scale.high = std::max(scale.high, *amount);
    }
  }
  for (auto& [name, scale] : scales_) {
    constexpr double kMargin = 1.0 / 12;  // so that what is beyond the last limit is seen
    if (scale.low < 0) scale.low -= (scale.high - scale.low) * kMargin;
    scale.high += std::max((scale.high - scale.low) * kMargin, kMargin);
  }
}

const Scale* LimitBands::ScaleFor(std::size_t sensor) const {
  const std::string& scale = sensors_[sensor].scale;
  return scale.empty() ? nullptr : &scales_.at(scale);
}

void LimitBands::Write(std::size_t sensor, Html& out) const {
  if (const Scale* scale = ScaleFor(sensor)) Drawing(*scale, out).Write(sensors_[sensor].amounts);
}

}  // namespace rux::page
