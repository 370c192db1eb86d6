// Alerts of Prometheus for the limits of all sensors of all machines, and their unit tests.
#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "exports/account.h"
#include "exports/amount.h"
#include "exports/formats.h"
#include "exports/prometheus_series.h"
#include "exports/sensors.h"
#include "machine/machine.h"
#include "ruxcomp/language/entries.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::exports {
namespace {

namespace language = ruxcomp::language;

struct Rule {
  const char* alert;
  language::EntryId limit;
  const char* comparison;  // of a reading with the limit
  const char* words;
  const char* severity;
};
constexpr Rule kRules[] = {
    {"SensorAboveFailureLimit", language::ENTRY_THRESHOLD_FH, ">", "above", "critical"},
    {"SensorAboveWarningLimit", language::ENTRY_THRESHOLD_WH, ">", "above", "warning"},
    {"SensorBelowWarningLimit", language::ENTRY_THRESHOLD_WL, "<", "below", "warning"},
    {"SensorBelowFailureLimit", language::ENTRY_THRESHOLD_FL, "<", "below", "critical"}};

std::string_view LimitNameOf(const Rule& rule) {
  return LimitName({language::FindEntryRow(rule.limit), 0, {}});
}

// What a rule is tried with: the limit that it is about, and readings at it and beyond.
struct Example {
  const Sensor& sensor;
  const SensorLimit& limit;
};

void WriteSeries(std::string_view series, std::string_view value, support::TextStream& out) {
  out += fmt::format("      - series: {}\n        values: \"{}\"\n", support::JsonString(series),
                     value);
}

void WriteTest(const Rule& rule, const Example& example, support::TextStream& out) {
  const Sensor& sensor = example.sensor;
  const std::string_view suffix = SeriesUnitOf(sensor.unit.symbol).suffix;
  const std::string name(sensor.section.name());
  const std::int64_t step = example.limit.IsUpper() ? 1 : -1;
  const auto text = [&](std::int64_t number) {
    return InSeriesUnit(sensor, sensor.AmountOf(number)).Text();
  };
  const std::int64_t at = sensor.quantity.SignedNumber(example.limit.number);
  out += "  - interval: 1m\n    input_series:\n";
  WriteSeries(SeriesText(kLimitSeries, suffix,
                         {{kSensorLabel, name}, {kLimitLabel, std::string(LimitNameOf(rule))}}),
              text(at) + ' ' + text(at), out);
  WriteSeries(SeriesText(kReadingSeries, suffix, {{kSensorLabel, name}}),
              text(at) + ' ' + text(at + step), out);
  out += fmt::format(
      "    alert_rule_test:\n"
      "      - eval_time: 0m\n        alertname: {0}\n        exp_alerts: []\n"
      "      - eval_time: 1m\n        alertname: {0}\n        exp_alerts:\n"
      "          - exp_labels: {{severity: {1}, sensor: {2}}}\n"
      "            exp_annotations:\n              summary: {3}\n",
      rule.alert, rule.severity, support::JsonString(name),
      support::JsonString(
          fmt::format("{} is {} its limit {}", name, rule.words, LimitNameOf(rule))));
}

// The first sensor that has the limit.
void WriteTestOf(const Rule& rule, const std::vector<Sensor>& sensors, support::TextStream& out) {
  for (const Sensor& sensor : sensors) {
    for (const SensorLimit& limit : sensor.limits) {
      if (limit.row->source == rule.limit) return WriteTest(rule, {sensor, limit}, out);
    }
  }
}

}  // namespace

void WritePrometheusRules(const machine::Machine&, Account&, support::TextStream& out) {
  out += "groups:\n  - name: rux_sensors\n    rules:\n";
  for (const Rule& rule : kRules) {
    out += fmt::format(
        "      - alert: {}\n"
        "        expr: >-\n"
        "          {{__name__=~\"{}(_.+)?\"}} {} on (instance, sensor)\n"
        "          {{__name__=~\"{}(_.+)?\", {}=\"{}\"}}\n"
        "        labels:\n          severity: {}\n"
        "        annotations:\n"
        "          summary: \"{{{{ $labels.sensor }}}} is {} its limit {}\"\n",
        rule.alert, kReadingSeries, rule.comparison, kLimitSeries, kLimitLabel, LimitNameOf(rule),
        rule.severity, rule.words, LimitNameOf(rule));
  }
}

void WritePrometheusTests(const machine::Machine& machine, Account&, support::TextStream& out) {
  const std::vector<Sensor> sensors = SensorsOf(machine);
  out += "rule_files:\n  - rules.yml\ntests:\n";
  for (const Rule& rule : kRules) WriteTestOf(rule, sensors, out);
}

}  // namespace rux::exports
