#include "imports/formats.h"

#include <vector>

#include "imports/formats/readers.h"

namespace rux::imports {

const std::vector<Format>& Formats() {
  static const std::vector<Format> formats = {
      {"csv", "sensors in rows and columns, as rux table --check takes them", ReadCsvTable},
      {"entity-manager", "configurations of OpenBMC's entity-manager", ReadEntityManager},
      {"lm-sensors", "sensors.conf of lm-sensors", ReadLmSensors},
      {"freeipmi", "what ipmi-sensors-config --checkout writes", ReadFreeIpmi},
      {"dtb", "a compiled device tree", ReadDeviceTree},
      {"dts", "the text of a device tree, which the program dtc compiles", ReadDeviceTreeSource},
  };
  return formats;
}

}  // namespace rux::imports
