#include "imports/formats.h"

#include <vector>

#include "imports/formats/readers.h"

namespace rux::imports {

const std::vector<Format>& Formats() {
  static const std::vector<Format> formats = {
      {"csv", ReadCsvTable},         {"entity-manager", ReadEntityManager},
      {"lm-sensors", ReadLmSensors}, {"freeipmi", ReadFreeIpmi},
      {"dtb", ReadDeviceTree},       {"dts", ReadDeviceTreeSource},
  };
  return formats;
}

}  // namespace rux::imports
