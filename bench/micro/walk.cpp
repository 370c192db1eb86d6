// Reading everything that a machine's file says, from beginning to end.
#include "ruxmeta/walk.h"

#include <libfdt.h>

#include <cstring>

#include "bench/micro/host.h"
#include "bench/micro/measure.h"
#include "bench/micro/peers.h"
#include "ruxcomp/ruxcomp.h"
#include "ruxmeta.h"

namespace {

// Every name and text by its length, every number as it is: a sum that depends on all of them.

std::size_t Sum(const tagTBLDATA& value) {
  if (value.kind == RUX_DATA_STRING) return std::strlen(value.data.string);
  return value.kind == RUX_DATA_NUMBER ? value.data.number : 0;
}

std::size_t SumOfSection(GCSECTION section) {
  std::size_t sum = 0;
  const std::uint32_t entries = gcGetEntryCount(section);
  for (std::uint32_t i = 0; i < entries; ++i) {
    std::uint32_t identifier = 0;
    GCENTRY entry = gcGetEntryByIndex(section, i, &identifier);
    sum += identifier;
    const std::uint32_t values = gcGetValueCount(entry);
    for (std::uint32_t j = 0; j < values; ++j) sum += Sum(gcGetValueByIndex(entry, j));
  }
  return sum;
}

void Plain(benchmark::State& state) {
  LoadMachine(Sensors(state));
  for (auto _ : state) {
    std::size_t sum = 0;
    for (std::uint32_t kind = RUX_SECT_MORVRUX; kind <= RUX_SECT_REPEATER; ++kind) {
      const std::uint32_t sections = gcGetSectCount(kind);
      for (std::uint32_t i = 0; i < sections; ++i) sum += SumOfSection(gcGetSectByIndex(kind, i));
    }
    benchmark::DoNotOptimize(sum);
  }
}

void WalkModel(benchmark::State& state) {
  const ruxcomp::Model& model = ModelOf(Sensors(state));
  for (auto _ : state) {
    std::size_t sum = 0;
    for (const ruxcomp::Section section : model.sections()) {
      for (const ruxcomp::Entry entry : section.entries()) {
        sum += entry.identifier();
        for (const ruxcomp::Value value : entry.values()) {
          sum += value.text().size() + value.number();
        }
      }
    }
    benchmark::DoNotOptimize(sum);
  }
}

std::size_t SumOfEntry(const ruxmeta_view& view, ruxmeta_entry entry) {
  std::size_t sum = ruxmeta_view_entry_identifier(entry);
  const std::size_t values = ruxmeta_view_value_count(entry);
  for (std::size_t i = 0; i < values; ++i) {
    const ruxmeta_value value = ruxmeta_view_entry_value(&view, entry, i);
    sum += value.text.size + value.number;
  }
  return sum;
}

void WalkC(benchmark::State& state) {
  ruxmeta_view view = RUXMETA_VIEW_INIT;
  Require(ruxmeta_get_view(CModelOf(Sensors(state)), &view) == RUXMETA_OK, "ruxmeta_get_view");
  for (auto _ : state) {
    std::size_t sum = 0;
    for (std::uint32_t kind = RUXMETA_SECTION_MORVRUX; kind <= RUXMETA_SECTION_REPEATER; ++kind) {
      const std::size_t sections = ruxmeta_view_section_count(&view, kind);
      for (std::size_t i = 0; i < sections; ++i) {
        const ruxmeta_section section = ruxmeta_view_section_at(&view, kind, i);
        ruxmeta_entries entries = ruxmeta_view_section_entries(section);
        for (ruxmeta_entry entry; ruxmeta_view_next_entry(&entries, &entry) != 0;) {
          sum += SumOfEntry(view, entry);
        }
      }
    }
    benchmark::DoNotOptimize(sum);
  }
}

// What a property holds is not written down in a tree: cells are summed up, texts are cells, too.
std::size_t SumOfCells(const char* name, const void* cells, int length) {
  std::size_t sum = std::strlen(name) + static_cast<std::size_t>(length);
  for (int i = 0; i + 4 <= length; i += 4) {
    sum += fdt32_ld(reinterpret_cast<const fdt32_t*>(static_cast<const char*>(cells) + i));
  }
  return sum;
}

void WalkTree(benchmark::State& state) {
  const void* tree = Tree(Sensors(state));
  for (auto _ : state) {
    std::size_t sum = 0;
    for (int node = 0; node >= 0; node = fdt_next_node(tree, node, nullptr)) {
      sum += std::strlen(fdt_get_name(tree, node, nullptr));
      int property = 0;
      fdt_for_each_property_offset(property, tree, node) {
        const char* name = nullptr;
        int length = 0;
        const void* cells = fdt_getprop_by_offset(tree, property, &name, &length);
        sum += SumOfCells(name, cells, length);
      }
    }
    benchmark::DoNotOptimize(sum);
  }
}

using namespace bench::flat;  // what flatc made of machine.fbs

std::size_t SumOf(const flatbuffers::String* text) { return text ? text->size() : 0; }
std::size_t SumOf(std::uint32_t number) { return number; }
std::size_t SumOf(const Operand* operand) {
  return static_cast<std::size_t>(operand->kind()) + operand->number();
}
std::size_t SumOf(const Row* row) { return std::size_t{row->first()} + row->last() + row->cell(); }

template <typename List>
std::size_t SumOf(const flatbuffers::Vector<List>* list);

std::size_t SumOf(const Value* value) {
  return SumOf(value->name()) + value->type() + SumOf(value->operands());
}
std::size_t SumOf(const Property* property) {
  return SumOf(property->name()) + SumOf(property->text());
}
std::size_t SumOf(const Group* group) {
  return SumOf(group->name()) + static_cast<std::size_t>(group->parent()) + group->children();
}
std::size_t SumOf(const Sensor* sensor) {
  return SumOf(sensor->name()) + sensor->id() + sensor->group() + sensor->type() +
         sensor->init_flag() + sensor->control_mask() + sensor->threshold_fh().value_or(0) +
         sensor->threshold_wh().value_or(0) + sensor->threshold_wl().value_or(0) +
         sensor->threshold_fl().value_or(0) + SumOf(sensor->properties()) + SumOf(sensor->values());
}
std::size_t SumOf(const Device* device) {
  return SumOf(device->name()) + device->id() + device->init_flag() + device->control_mask() +
         SumOf(device->properties()) + SumOf(device->values());
}
std::size_t SumOf(const Action* action) {
  return SumOf(action->name()) + action->arguments() + SumOf(action->steps());
}
std::size_t SumOf(const Curve* table) {
  return SumOf(table->name()) + table->type() + SumOf(table->rows());
}
std::size_t SumOf(const Repeater* repeater) {
  return SumOf(repeater->name()) + repeater->count() + repeater->action() +
         SumOf(repeater->arguments());
}
std::size_t SumOf(const EventList* events) {
  return SumOf(events->name()) + events->id() + events->parent_id() + SumOf(events->sensors());
}

template <typename Element>
std::size_t SumOf(const flatbuffers::Vector<Element>* list) {
  std::size_t sum = 0;
  if (!list) return sum;
  for (const auto element : *list) sum += SumOf(element);
  return sum;
}

void WalkFlat(benchmark::State& state) {
  const Machine& machine = Flat(Sensors(state));
  for (auto _ : state) {
    const std::size_t sum =
        SumOf(machine.model()) + machine.type() + machine.flag() + machine.loop_ms() +
        SumOf(machine.groups()) + SumOf(machine.sensors()) + SumOf(machine.devices()) +
        SumOf(machine.actions()) + SumOf(machine.tables()) + SumOf(machine.globals()) +
        SumOf(machine.properties()) + SumOf(machine.repeaters()) + SumOf(machine.events());
    benchmark::DoNotOptimize(sum);
  }
}

}  // namespace

int main(int argc, char** argv) {
  // A value's index is looked for in its whole table, so that everything takes the square of it.
  Measure("walk/ours", Plain, 10000);
  Measure("walk/model", WalkModel);
  Measure("walk/c", WalkC);
  Measure("walk/libfdt", WalkTree);
  Measure("walk/flatbuffers", WalkFlat);
  return RunMeasurements(argc, argv);
}
