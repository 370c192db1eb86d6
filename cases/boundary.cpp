#include "cases/boundary.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cases/run.h"
#include "evaluation/bands.h"
#include "evaluation/evaluator.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "evaluation/round.h"
#include "evaluation/target.h"
#include "machine/place.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/model/handles.h"
#include "table/cell.h"
#include "table/forms.h"

namespace rux::cases {

namespace language = ruxcomp::language;

namespace {

using evaluation::Band;
using evaluation::Number;
using evaluation::StatedLimit;

// The readings around the limits of a sensor.
class Surroundings {
 public:
  Surroundings(const Bench& bench, const ruxcomp::Section& sensor)
      : bench_(bench), sensor_(sensor) {
    const auto& compared = bench.profile.limit_value;
    const bool has_ipmi = static_cast<bool>(evaluation::ValueEntry(sensor, kIpmiValue));
    if (!has_ipmi || !compared.Is(profile::LimitValue::kValueIpmi)) names_.emplace_back("");
    if (has_ipmi && !compared.Is(profile::LimitValue::kValue)) names_.emplace_back(kIpmiValue);
  }

  // "VALUE": what has the readings.
  std::string ValueText() const {
    std::string text;
    for (const std::string& name : names_) {
      text += text.empty() ? "" : ", ";
      text += name.empty() ? std::string(language::kPlainValue)
                           : std::string(language::kValuePrefix) + name;
    }
    return text;
  }

  // "92: normal", once the sensor has the reading for long enough.
  std::string TextAt(Number number) const {
    const std::optional<Band> band = After({number});
    return evaluation::TextOf(number) + ": " + (band ? band->Text() : kNoReading);
  }

  // The reading that is within the limit again after one beyond it; empty when none is beyond.
  std::string BackText(const StatedLimit& limit) const {
    const evaluation::Result hysteresis = evaluation::HysteresisOf(bench_.profile, sensor_);
    if (!hysteresis.IsNumber()) return hysteresis.Text();
    const Number inwards = limit.row->side == language::LimitSide::kMost ? -1 : 1;
    Number beyond = *limit.number - inwards;
    if (!After({beyond})) beyond = *limit.number;
    if (!IsBeyond(After({beyond}), limit)) return "";
    Number back = *limit.number + inwards * hysteresis.number();
    if (IsBeyond(After({beyond, back}), limit)) back += inwards;
    const std::optional<Band> band = After({beyond, back});
    return evaluation::TextOf(back) + ": " + (band ? band->Text() : kNoReading);
  }

 private:
  static constexpr char kIpmiValue[] = "IPMI";
  static constexpr char kNoReading[] = "no reading can be that";

  static bool IsBeyond(const std::optional<Band>& band, const StatedLimit& limit) {
    return band && std::any_of(band->beyond.begin(), band->beyond.end(),
                               [&](const auto& each) { return each.row == limit.row; });
  }

  // The band after readings that each last for long enough; none when one of them cannot be.
  std::optional<Band> After(const std::vector<Number>& numbers) const {
    evaluation::Readings readings;
    evaluation::Evaluator evaluator(bench_.plan, bench_.profile, readings);
    evaluation::Rounds rounds(evaluator);
    const evaluation::Target target{language::FindCompiledKind(sensor_.kind()), sensor_, {}};
    std::optional<Band> band;
    for (const Number number : numbers) {
      if (evaluator.arithmetic().Given(number).kind() == evaluation::Result::Kind::kError)
        return std::nullopt;
      for (const std::string& name : names_) {
        if (const ruxcomp::Entry entry = evaluation::ValueEntry(sensor_, name))
          readings.Set(evaluation::KeyOf(sensor_, entry), {number});
      }
      for (std::uint32_t i = 0; i < bench_.profile.debounce.stated.value_or(1); ++i)
        band = rounds.Next({target}).front().band;
    }
    return band;
  }

  const Bench& bench_;
  const ruxcomp::Section& sensor_;
  std::vector<std::string> names_;  // of its values that are compared: "", "IPMI"
};

// Of the columns from the one below the limit on.
std::vector<std::string> BandTexts(const Surroundings& around, const StatedLimit& limit) {
  const std::string number = limit.number ? evaluation::TextOf(*limit.number) + ": " : "";
  if (limit.use == StatedLimit::Use::kLeftOut)
    return {"", number + "not compared: " + limit.reason, "", ""};
  if (!limit.number) return {"", "unknown (" + limit.reason + ')', "", ""};
  std::vector<std::string> texts;
  for (const int step : {-1, 0, 1}) texts.push_back(around.TextAt(*limit.number + step));
  const bool is_compared = limit.use == StatedLimit::Use::kCompared;
  texts.push_back(is_compared ? around.BackText(limit) : "");
  return texts;
}

}  // namespace

table::Sheet BoundariesOf(const Bench& bench) {
  table::Sheet sheet;
  sheet.title = bench.plan.machine().name();
  sheet.lines = {profile::TitleOf(bench.profile)};
  sheet.columns = {"sensor", "limit", "compared", "below it", "at it", "above it", "back", "place"};
  for (const ruxcomp::Section sensor : bench.plan.machine().model().sections(RUX_SECT_SENSOR)) {
    const Surroundings around(bench, sensor);
    for (const StatedLimit& limit : evaluation::StatedLimitsOf(bench.profile, sensor)) {
      const auto place = evaluation::PlaceOf(bench.plan.machine(), sensor, limit.entry);
      std::vector<table::Cell> cells = {
          table::TextCell(std::string(sensor.name())),
          table::TextCell(std::string(language::KeywordOf(limit.row->entry))),
          table::TextCell(around.ValueText())};
      for (std::string& text : BandTexts(around, limit))
        cells.push_back(table::TextCell(std::move(text)));
      cells.push_back(table::TextCell(place ? place->Text() : ""));
      sheet.rows.push_back(table::RowOf(std::move(cells)));
    }
  }
  return sheet;
}

void AddProfileColumn(const profile::Profile& profile, table::Sheet& sheet) {
  sheet.columns.emplace_back("profile");
  for (table::RowCells& row : sheet.rows)
    row.push_back({sheet.columns.size() - 1, table::TextCell(profile::NameWithHash(profile))});
}

}  // namespace rux::cases
