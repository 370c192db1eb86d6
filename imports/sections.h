// Sections with what a board says of a sensor or a device.
#ifndef IMPORTS_SECTIONS_H_
#define IMPORTS_SECTIONS_H_

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "imports/board.h"
#include "imports/names.h"
#include "imports/scale.h"
#include "imports/script_text.h"
#include "losses/ledger.h"

namespace rux::imports {

// Names of properties that say what limits are numbers of.
inline constexpr char kUnitProperty[] = "UNIT";
inline constexpr char kDivisorProperty[] = "DIVISOR";
inline constexpr char kSignProperty[] = "SIGN";
// What the sensor is read from; what the source calls a section.
inline constexpr char kDeviceProperty[] = "DEVICE";
inline constexpr char kLabelProperty[] = "LABEL";

// What other sections call a sensor and what it is in.
struct SensorPlace {
  std::string name;
  std::uint32_t id;
  std::string area;
  std::string device;  // empty: none
};

// Writes sections and notes in the ledger what became of their items.
class SectionWriter {
 public:
  // `sources`: what comments call the files of the ledger.
  SectionWriter(ScriptText& script, losses::Ledger& ledger, const std::vector<std::string>& sources)
      : script_(script), ledger_(ledger), sources_(sources) {}

  void Write(const Sensor& sensor, const SensorPlace& place);
  void Write(const Device& device, const std::string& name, std::uint32_t id);
  // An entry PREFIX<key> for each that has a text.
  void Write(std::string_view prefix, const std::vector<Property>& properties);

  // "board.json:12: fan 1 (/0/Exposes/3)", as a comment.
  void Comment(const Origin& origin, std::string_view name);
  // The same of the name of a section, which is that name in the scripts.
  void SettleName(const Text& source, const std::string& written);
  // What becomes of the item when the script has this text of it.
  void Settle(const Text& source, const std::string& written, losses::Reason reason);

 private:
  // A section begins, in which these keys are taken.
  void BeginKeys(std::initializer_list<const char*> taken);
  void WriteNumber(const Sensor& sensor, language::EntryId entry, const std::string& otherwise);
  void WriteLimits(const Sensor& sensor, const ScaledLimits& scaled);
  void SettleNumber(const Limit& limit, const std::string& written);
  void WriteUnit(const Sensor& sensor);

  ScriptText& script_;
  losses::Ledger& ledger_;
  const std::vector<std::string>& sources_;
  Names keys_;  // of the section's properties
};

}  // namespace rux::imports

#endif  // IMPORTS_SECTIONS_H_
