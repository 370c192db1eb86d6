// Finding a sensor, or a group.
#include <libfdt.h>

#include "bench/files/model_files.h"
#include "bench/micro/host.h"
#include "bench/micro/measure.h"
#include "bench/micro/peers.h"
#include "ruxcomp/ruxcomp.h"
#include "ruxmeta.h"

namespace {

template <typename Pick>
auto KnownPicks(std::uint32_t sensors, Pick pick) {
  const auto known = SensorsOf(sensors);
  return RandomPicks(sensors, [&](std::uint32_t i) { return pick(known[i]); });
}
std::uint32_t IdOf(const KnownSensor& sensor) { return sensor.id; }
std::string NameOf(const KnownSensor& sensor) { return sensor.name; }
std::string PathOf(const KnownSensor& sensor) { return sensor.path; }
// Names begin with that of the group.
std::string GroupOf(const KnownSensor& sensor) {
  return sensor.name.substr(0, sensor.name.find('_'));
}

void ById(benchmark::State& state) {
  LoadMachine(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), IdOf),
            [](std::uint32_t id) { return gcGetSectByID(RUX_SECT_SENSOR, id); });
}

void ByName(benchmark::State& state) {
  LoadMachine(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), NameOf),
            [](const std::string& name) { return gcGetSectByName(RUX_SECT_SENSOR, name); });
}

void ByIndex(benchmark::State& state) {
  LoadMachine(Sensors(state));
  AskInTurn(state, RandomPicks(Sensors(state), [](std::uint32_t i) { return i; }),
            [](std::uint32_t i) { return gcGetSectByIndex(RUX_SECT_SENSOR, i); });
}

void GroupIndex(benchmark::State& state) {
  LoadMachine(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), GroupOf),
            [](const std::string& name) { return gcGetGroupIndex(name); });
}

void ModelById(benchmark::State& state) {
  const ruxcomp::Model& model = ModelOf(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), IdOf),
            [&](std::uint32_t id) { return model.section_with_id(RUX_SECT_SENSOR, id); });
}

void ModelByName(benchmark::State& state) {
  const ruxcomp::Model& model = ModelOf(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), NameOf),
            [&](const std::string& name) { return model.section_named(RUX_SECT_SENSOR, name); });
}

void ModelByIndex(benchmark::State& state) {
  const ruxcomp::Model& model = ModelOf(Sensors(state));
  AskInTurn(state, RandomPicks(Sensors(state), [](std::uint32_t i) { return i; }),
            [&](std::uint32_t i) { return model.sections(RUX_SECT_SENSOR)[i]; });
}

void CById(benchmark::State& state) {
  const ruxmeta_model* model = CModelOf(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), IdOf), [=](std::uint32_t id) {
    return ruxmeta_find_section_by_id(model, RUXMETA_SECTION_SENSOR, id);
  });
}

void CByName(benchmark::State& state) {
  const ruxmeta_model* model = CModelOf(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), NameOf), [=](const std::string& name) {
    return ruxmeta_find_section_text(model, RUXMETA_SECTION_SENSOR, {name.data(), name.size()});
  });
}

void NodeById(benchmark::State& state) {
  const void* tree = Tree(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), IdOf), [=](std::uint32_t id) {
    const fdt32_t cell = cpu_to_fdt32(id);
    return fdt_node_offset_by_prop_value(tree, -1, "id", &cell, sizeof cell);
  });
}

void NodeByName(benchmark::State& state) {
  const void* tree = Tree(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), NameOf), [=](const std::string& name) {
    return fdt_node_offset_by_prop_value(tree, -1, "label", name.c_str(),
                                         static_cast<int>(name.size() + 1));
  });
}

void NodeByPath(benchmark::State& state) {
  const void* tree = Tree(Sensors(state));
  AskInTurn(state, KnownPicks(Sensors(state), PathOf),
            [=](const std::string& path) { return fdt_path_offset(tree, path.c_str()); });
}

void KeyById(benchmark::State& state) {
  const auto* sensors = Flat(Sensors(state)).sensors();
  AskInTurn(state, KnownPicks(Sensors(state), IdOf),
            [=](std::uint32_t id) { return sensors->LookupByKey(id); });
}

void KeyByName(benchmark::State& state) {
  const auto& machine = Flat(Sensors(state));
  const auto* names = machine.sensor_names();
  const auto* sensors = machine.sensors();
  AskInTurn(state, KnownPicks(Sensors(state), NameOf), [=](const std::string& name) {
    return sensors->Get(names->LookupByKey(name.c_str())->sensor());
  });
}

void KeyByIndex(benchmark::State& state) {
  const auto* sensors = Flat(Sensors(state)).sensors();
  AskInTurn(state, RandomPicks(Sensors(state), [](std::uint32_t i) { return i; }),
            [=](std::uint32_t i) { return sensors->Get(i); });
}

}  // namespace

int main(int argc, char** argv) {
  Measure("sensor by ID/ours", ById);
  Measure("sensor by ID/model", ModelById);
  Measure("sensor by ID/c", CById);
  Measure("sensor by ID/libfdt", NodeById);
  Measure("sensor by ID/flatbuffers", KeyById);
  Measure("sensor by name/ours", ByName);
  Measure("sensor by name/model", ModelByName);
  Measure("sensor by name/c", CByName);
  Measure("sensor by name/libfdt", NodeByName);
  Measure("sensor by name/libfdt, path", NodeByPath);
  Measure("sensor by name/flatbuffers", KeyByName);
  Measure("sensor by index/ours", ByIndex);
  Measure("sensor by index/model", ModelByIndex);
  Measure("sensor by index/flatbuffers", KeyByIndex);
  Measure("group index/ours", GroupIndex);
  return RunMeasurements(argc, argv);
}
