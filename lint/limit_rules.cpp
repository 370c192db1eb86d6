// Limits of sensors.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "lint/lint_list.h"
#include "lint/lint_rows.h"
#include "lint/lint_rule.h"
#include "rules/rule.h"
#include "rules/script_item.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "settings/quantity.h"

namespace rux::lint {
namespace {

using rules::ItemRef;
using rules::ScriptItem;
using rules::ScriptSection;

// As language::kLimitsUpwards has them.
enum Place : std::size_t { kFailedLow, kWarningLow, kTheory, kWarningHigh, kFailedHigh, kPlaces };
static_assert(std::size(language::kLimitsUpwards) == kPlaces);

std::size_t PlaceOf(std::uint32_t entry) {
  return static_cast<std::size_t>(
      std::find(std::begin(language::kLimitsUpwards), std::end(language::kLimitsUpwards), entry) -
      std::begin(language::kLimitsUpwards));
}

// What a host reads as no limit.
constexpr std::uint32_t kNoNumber = 0xFFFFFFFF;

struct Limit {
  ItemRef item;
  std::string_view text;
  std::uint32_t number;
};
using Limits = std::array<std::optional<Limit>, kPlaces>;

// A rule about the limits of one sensor after the other.
class SensorRule : public rules::Rule {
 public:
  explicit SensorRule(const LintContext& context) : context_(context) {}

  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_SENSOR;
  }
  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    const bool says_what = entry == language::ENTRY_TYPE || entry == language::ENTRY_NAME ||
                           entry == language::ENTRY_P;
    return WantsSections(kind) && (says_what || PlaceOf(entry) != kPlaces);
  }
  void BeginSection(const ScriptSection&, language::SectionId) override {
    limits_ = {};
    type_.reset();
    name_ = {};
    properties_.clear();
  }
  void Check(const ScriptItem& item) override {
    if (item.entry == language::ENTRY_NAME) name_ = item.first();
    if (item.entry == language::ENTRY_P) {
      properties_.emplace(item.name().substr(language::kPropertyPrefix.size()), item.first());
    }
    if (item.entry == language::ENTRY_NAME || item.entry == language::ENTRY_P) return;
    const auto number = context_.words.WordOrNumber(item.first());
    if (!number || *number == kNoNumber) return;
    if (item.entry == language::ENTRY_TYPE) {
      type_ = number;
    } else {
      limits_[PlaceOf(item.entry)] = Limit{item, item.first(), *number};
    }
  }

 protected:
  const LintContext& context() const { return context_; }
  const Limits& limits() const { return limits_; }
  std::optional<std::uint32_t> type() const { return type_; }
  std::string_view name() const { return name_; }

  // Whether its limits may be negative; no answer when the project does not say it.
  std::optional<bool> is_signed() const {
    const auto property = [&](const std::string& name) {
      const auto own = properties_.find(name);
      return std::string(own == properties_.end() ? std::string_view() : own->second);
    };
    return settings::QuantityOf(context_.limits, {name_, type_, property}).is_signed;
  }

 private:
  const LintContext context_;
  Limits limits_;
  std::optional<std::uint32_t> type_;
  std::string_view name_;
  rules::TextMap<std::string_view> properties_;
};

class LimitRule : public SensorRule {
 public:
  using SensorRule::SensorRule;

  void EndSection() override {
    const std::optional<bool> sign = is_signed();
    if (!sign && HasHighNumbers()) return;
    is_signed_ = sign.value_or(false);
    const Limit* below = nullptr;
    for (const std::size_t at : {kFailedLow, kWarningLow, kWarningHigh, kFailedHigh}) {
      if (!limits()[at]) continue;
      if (below != nullptr) Compare(*below, *limits()[at], RuleId::kLimitOrder);
      below = &*limits()[at];
    }
    const auto& theory = limits()[kTheory];
    if (!theory) return;
    const auto& low = limits()[kWarningLow] ? limits()[kWarningLow] : limits()[kFailedLow];
    const auto& high = limits()[kWarningHigh] ? limits()[kWarningHigh] : limits()[kFailedHigh];
    if (low) Compare(*low, *theory, RuleId::kTheoryOutsideLimits);
    if (high) Compare(*theory, *high, RuleId::kTheoryOutsideLimits);
  }

 private:
  static constexpr std::uint32_t kSignBit = 0x80000000;

  // They may be negative ones.
  bool HasHighNumbers() const {
    return std::any_of(limits().begin(), limits().end(), [](const std::optional<Limit>& limit) {
      return limit && limit->number >= kSignBit;
    });
  }

  std::uint32_t OrderOf(const Limit& limit) const {
    return is_signed_ ? limit.number ^ kSignBit : limit.number;
  }

  void Compare(const Limit& lower, const Limit& higher, RuleId rule) const {
    if (OrderOf(lower) <= OrderOf(higher)) return;
    context()
        .report
        .Add(
            RowOf(rule), lower.item,
            [&] {
              return fmt::format("{} is above {}, which is {}", lower.text, higher.item.name(),
                                 higher.text);
            },
            lower.text)
        .Note("the other one is here", higher.item, higher.text);
  }

  bool is_signed_ = false;
};

class LimitsOfTypeRule : public SensorRule {
 public:
  using SensorRule::SensorRule;

  void BeginSection(const ScriptSection& section, language::SectionId kind) override {
    SensorRule::BeginSection(section, kind);
    section_ = &section;
  }

  void EndSection() override {
    if (!type()) return;
    const Sensor sensor{*section_, name(), *type(), Has(kFailedLow) || Has(kWarningLow),
                        Has(kFailedHigh) || Has(kWarningHigh)};
    Known& known = types_[sensor.type];
    ++known.count;
    if (sensor.has_low) known.low.Add(*section_);
    if (sensor.has_high) known.high.Add(*section_);
    if (sensor.has_low || sensor.has_high) known.any.Add(*section_);
    if (!sensor.has_low || !sensor.has_high) sensors_.push_back(sensor);
  }

  void EndScript(const rules::Script&) override {
    for (const Sensor& sensor : sensors_) {
      const Known& known = types_[sensor.type];
      if (!sensor.has_low && !sensor.has_high) {
        ReportIfUsual(RuleId::kMissingLimits, sensor, "no limits", known.any);
      } else if (!sensor.has_low) {
        ReportIfUsual(RuleId::kOneSidedLimits, sensor, "no lower limits", known.low);
      } else {
        ReportIfUsual(RuleId::kOneSidedLimits, sensor, "no upper limits", known.high);
      }
    }
  }

 private:
  struct Sensor {
    ScriptSection section;
    std::string_view name;  // empty: none
    std::uint32_t type;
    bool has_low;
    bool has_high;
  };
  // The sensors of a type that have some limits.
  struct Having {
    std::size_t count = 0;
    std::optional<ScriptSection> first;

    void Add(const ScriptSection& section) {
      if (count++ == 0) first = section;
    }
  };
  struct Known {
    std::size_t count = 0;
    Having low;
    Having high;
    Having any;
  };

  bool Has(std::size_t place) const { return limits()[place].has_value(); }

  void ReportIfUsual(RuleId rule, const Sensor& sensor, const char* lacking, const Having& others) {
    const std::size_t count = types_[sensor.type].count;
    if (others.count * 2 < count) return;
    context()
        .report
        .Add(RowOf(rule), sensor.section,
             [&] {
               return fmt::format("{} has {}; {} of {} sensors of TYPE {} have some",
                                  sensor.name.empty() ? "this sensor" : sensor.name, lacking,
                                  others.count, count, sensor.type);
             })
        .Note("the first of those that have some",
              {others.first->file, others.first->section->line});
  }

  const ScriptSection* section_ = nullptr;
  std::vector<Sensor> sensors_;  // that lack some
  std::unordered_map<std::uint32_t, Known> types_;
};

}  // namespace

std::unique_ptr<rules::Rule> MakeLimitRule(const LintContext& context) {
  return std::make_unique<LimitRule>(context);
}

std::unique_ptr<rules::Rule> MakeLimitsOfTypeRule(const LintContext& context) {
  return std::make_unique<LimitsOfTypeRule>(context);
}

}  // namespace rux::lint
