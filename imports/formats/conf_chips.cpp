#include "imports/formats/conf_chips.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/decimal.h"
#include "imports/formats/conf_features.h"
#include "imports/formats/formula.h"
#include "imports/formats/ratio.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"

namespace rux::imports {
namespace {

using losses::ItemId;
using losses::Reason;

class ChipWriter {
 public:
  ChipWriter(Board& board, losses::Ledger& ledger) : board_(board), ledger_(ledger) {}

  void AddFeature(const ConfChip& chip, const ConfFeature& feature) {
    if (feature.is_ignored || feature.items.empty()) {
      for (const ItemId item : feature.items) ledger_.Dropped(item, Reason::kDisabled);
      return;
    }
    const Device& device = board_.devices[chip.device];
    Sensor sensor;
    sensor.name = feature.label.text;
    if (sensor.name.text.empty()) sensor.name.text = feature.name.feature;
    sensor.area = board_.AreaFor({device.name.text, losses::kNoItem}, {}, device.origin);
    sensor.device = chip.device;
    sensor.quantity = *feature.name.quantity;
    sensor.origin = feature.origin;
    sensor.properties.push_back({"FEATURE", {feature.name.feature, losses::kNoItem}});
    if (feature.compute) AddCompute(*feature.compute, sensor);
    AddSettings(feature.settings, sensor);
    board_.sensors.push_back(std::move(sensor));
  }

 private:
  // What the chip reads, times a factor and plus an offset, is the amount.
  void AddCompute(const ConfCompute& compute, Sensor& sensor) {
    const auto& [factor, offset, hindrance] = compute.reading;
    if (hindrance) return ledger_.Dropped(compute.item, *hindrance);
    std::string after;
    const auto add = [&](const char* key, const Ratio& ratio) {
      sensor.properties.push_back({key, {ratio.Text(), losses::kNoItem}});
      after += (after.empty() ? "" : ", ") + (key + (' ' + ratio.Text()));
    };
    if (!(factor == Ratio{1, 1}) || offset == Ratio{}) add("FACTOR", factor);
    if (!(offset == Ratio{})) add("OFFSET", offset);
    ledger_.Changed(compute.item, after,
                    compute.is_undone ? Reason::kRewritten : Reason::kSimplified);
  }

  // The blocks are gone through from the last to the first, the settings of each as they are
  // written: of several settings of the same, the chip keeps the last one of the first block.
  void AddSettings(const std::vector<ConfSetting>& settings, Sensor& sensor) {
    for (std::size_t begin = 0, end = 0; begin < settings.size(); begin = end) {
      while (end < settings.size() && settings[end].block == settings[begin].block) ++end;
      for (std::size_t i = end; i > begin; --i) AddSetting(settings[i - 1], sensor);
    }
  }

  void AddSetting(const ConfSetting& setting, Sensor& sensor) {
    const std::optional<language::EntryId> entry = LimitFor(setting.attribute);
    if (!entry) {
      return ledger_.Dropped(
          setting.item, IsOtherLimit(setting.attribute) ? Reason::kNoSuchLimit : Reason::kNoPlace);
    }
    const Formula& formula = setting.formula;
    if (!formula.IsNumber())
      return ledger_.Dropped(setting.item, formula.hindrance.value_or(Reason::kKnownAtRunTime));
    const std::optional<Decimal> amount =
        Decimal::Quotient(formula.offset.top, formula.offset.bottom);
    if (!amount) return ledger_.Dropped(setting.item, Reason::kDoesNotFit);
    AddLimit(sensor, Limit{*entry, *amount, setting.item}, ledger_);
  }

  Board& board_;
  losses::Ledger& ledger_;
};

}  // namespace

void AddSensors(const ConfChip& chip, Board& board, losses::Ledger& ledger) {
  ChipWriter writer(board, ledger);
  for (const ConfFeature& feature : chip.features) writer.AddFeature(chip, feature);
}

}  // namespace rux::imports
