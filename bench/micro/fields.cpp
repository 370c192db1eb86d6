// Reading one field of a sensor that is known already: its ID, which is another number for each.
#include <libfdt.h>

#include "bench/files/model_files.h"
#include "bench/micro/host.h"
#include "bench/micro/measure.h"
#include "bench/micro/peers.h"
#include "ruxcomp/ruxcomp.h"

namespace {

std::vector<GCSECTION> PickedSections(std::uint32_t sensors) {
  LoadMachine(sensors);
  return RandomPicks(sensors, [](std::uint32_t i) { return gcGetSectByIndex(RUX_SECT_SENSOR, i); });
}

void EntryByName(benchmark::State& state) {
  AskInTurn(state, PickedSections(Sensors(state)),
            [](GCSECTION sensor) { return gcGetEntryByName(sensor, "UNIT", nullptr); });
}

void EntryByType(benchmark::State& state) {
  AskInTurn(state, PickedSections(Sensors(state)),
            [](GCSECTION sensor) { return gcGetEntryByType(sensor, RUX_ENTRY_ID); });
}

void ValueByIndex(benchmark::State& state) {
  std::vector<GCENTRY> entries;
  for (GCSECTION sensor : PickedSections(Sensors(state))) {
    entries.push_back(gcGetEntryByType(sensor, RUX_ENTRY_ID));
  }
  AskInTurn(state, entries, [](GCENTRY entry) { return gcGetValueByIndex(entry, 0).data.number; });
}

void ModelValue(benchmark::State& state) {
  const ruxcomp::Sections sensors = ModelOf(Sensors(state)).sections(RUX_SECT_SENSOR);
  const auto entry = [&](std::uint32_t i) { return sensors[i].entry(RUX_ENTRY_ID); };
  AskInTurn(state, RandomPicks(Sensors(state), entry),
            [](ruxcomp::Entry id) { return id.value().number(); });
}

void ValueById(benchmark::State& state) {
  std::vector<GCENTRY> entries;
  for (GCSECTION sensor : PickedSections(Sensors(state))) {
    entries.push_back(gcGetEntryByName(sensor, "", nullptr));
  }
  AskInTurn(state, entries,
            [](GCENTRY entry) { return gcGetValueByID(entry, RUX_SELECT_TYPE).data.number; });
}

void Field(benchmark::State& state) {
  AskInTurn(state, PickedSections(Sensors(state)), [](GCSECTION sensor) {
    GCENTRY id = gcGetEntryByType(sensor, RUX_ENTRY_ID);
    return gcGetValueByIndex(id, 0).data.number;
  });
}

void ModelField(benchmark::State& state) {
  const ruxcomp::Sections sensors = ModelOf(Sensors(state)).sections(RUX_SECT_SENSOR);
  AskInTurn(state, RandomPicks(Sensors(state), [&](std::uint32_t i) { return sensors[i]; }),
            [](ruxcomp::Section sensor) { return sensor.entry(RUX_ENTRY_ID).value().number(); });
}

void TreeField(benchmark::State& state) {
  const void* tree = Tree(Sensors(state));
  const auto known = SensorsOf(Sensors(state));
  const auto nodes = RandomPicks(Sensors(state), [&](std::uint32_t i) {
    return fdt_path_offset(tree, known[i].path.c_str());
  });
  AskInTurn(state, nodes, [=](int node) {
    const void* id = fdt_getprop(tree, node, "id", nullptr);
    return fdt32_ld(static_cast<const fdt32_t*>(id));
  });
}

void FlatField(benchmark::State& state) {
  const auto* sensors = Flat(Sensors(state)).sensors();
  AskInTurn(state, RandomPicks(Sensors(state), [=](std::uint32_t i) { return sensors->Get(i); }),
            [](const bench::flat::Sensor* sensor) { return sensor->id(); });
}

}  // namespace

int main(int argc, char** argv) {
  Measure("entry by name/ours", EntryByName);
  Measure("entry by type/ours", EntryByType);
  Measure("value by index/ours", ValueByIndex);
  Measure("value by index/model", ModelValue);
  Measure("value by selector/ours", ValueById);
  Measure("one field/ours", Field);
  Measure("one field/model", ModelField);
  Measure("one field/libfdt", TreeField);
  Measure("one field/flatbuffers", FlatField);
  return RunMeasurements(argc, argv);
}
