#include "cases/boundary.h"

#include <cstdint>
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
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "table/cell.h"
#include "table/forms.h"

namespace rux::cases {

namespace language = ruxcomp::language;

namespace {

// "92: normal", once a sensor has the reading for long enough.
std::string BandAt(const Bench& bench, const ruxcomp::Section& sensor, evaluation::Number number) {
  evaluation::Readings readings;
  for (const char* name : {"", "IPMI"}) {
    if (const ruxcomp::Entry entry = evaluation::ValueEntry(sensor, name))
      readings.SetValue(evaluation::KeyOf(sensor, entry), {number});
  }
  evaluation::Evaluator evaluator(bench.plan, bench.profile, readings);
  evaluation::Rounds rounds(evaluator);
  const evaluation::Target target{language::FindCompiledKind(sensor.kind()), sensor, {}};
  std::string band;
  for (std::uint32_t i = 0; i < bench.profile.debounce.stated.value_or(1); ++i)
    band = rounds.Next({target}).front().band->Text();
  return evaluation::TextOf(number) + ": " + band;
}

}  // namespace

table::Sheet BoundariesOf(const Bench& bench) {
  table::Sheet sheet;
  sheet.title = bench.plan.machine().name();
  sheet.lines = {profile::TitleOf(bench.profile)};
  sheet.columns = {"sensor", "limit", "below it", "at it", "above it", "place"};
  for (const ruxcomp::Section sensor : bench.plan.machine().model().sections(RUX_SECT_SENSOR)) {
    for (const evaluation::SensorLimit& limit :
         evaluation::LimitsOf(bench.profile, sensor).limits) {
      const auto place = evaluation::PlaceOf(bench.plan.machine(), sensor, limit.entry);
      std::vector<table::Cell> cells = {
          table::TextCell(std::string(sensor.name())),
          table::TextCell(std::string(language::KeywordOf(limit.row->entry)))};
      for (const int step : {-1, 0, 1})
        cells.push_back(table::TextCell(BandAt(bench, sensor, limit.number + step)));
      cells.push_back(table::TextCell(place ? place->Text() : ""));
      sheet.rows.push_back(table::RowOf(std::move(cells)));
    }
  }
  return sheet;
}

}  // namespace rux::cases
