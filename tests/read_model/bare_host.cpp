// A host that is built without exceptions and without RTTI and is not linked to the library:
//
//   bare_host META...
//
// opens all files, then prints of each its sensors, found in every way that there is:
// "board.meta: INLET #0x101 THRESHOLD_FH 45". Ends with 1 and a reason when it refuses one.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

#include "ruxcomp/identifiers.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/verify.h"

namespace {

#if defined(__cpp_exceptions) || defined(__cpp_rtti)
#error "this host does without"
#endif

using ruxcomp::Model;
using ruxcomp::Section;

constexpr std::uint32_t kSensor = RUX_SECT_SENSOR;

bool IsFoundEachWay(const Model& model, const Section& sensor) {
  // The second question makes the index that the third one uses.
  for (int i = 0; i < 3; ++i) {
    if (model.section_named(kSensor, sensor.name()) != sensor) return false;
    if (model.section_with_id(kSensor, sensor.id().value_or(0)) != sensor) return false;
  }
  return model.sections(kSensor)[sensor.ordinal()] == sensor;
}

bool Print(const char* path, const Model& model) {
  for (const Section sensor : model.sections(kSensor)) {
    if (!IsFoundEachWay(model, sensor)) return false;
    std::printf("%s: %s #0x%X", path, sensor.name().data(),
                static_cast<unsigned>(sensor.id().value_or(0)));
    if (const ruxcomp::Value limit = sensor.entry(RUX_ENTRY_THRESHOLD_FH).value()) {
      std::printf(" THRESHOLD_FH %u", static_cast<unsigned>(limit.number()));
    }
    std::printf("\n");
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Model> models;
  for (int i = 1; i < argc; ++i) {
    ruxcomp::Fault fault;
    std::optional<Model> model = Model::Open(argv[i], &fault);
    if (!model) {
      std::fprintf(stderr, "%s: %s\n", argv[i], ruxcomp::FaultText(fault).c_str());
      return 1;
    }
    models.push_back(std::move(*model));
  }
  for (int i = 1; i < argc; ++i) {
    if (!Print(argv[i], models[static_cast<std::size_t>(i) - 1])) return 2;
  }
}
