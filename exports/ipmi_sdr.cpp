// Sensor records of IPMI, as commands of openipmi's simulator.
#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "exports/account.h"
#include "exports/amount.h"
#include "exports/byte_code.h"
#include "exports/formats.h"
#include "exports/sensors.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/model/handles.h"
#include "support/text_stream.h"
#include "support/utf8.h"

namespace rux::exports {
namespace {

namespace language = ruxcomp::language;

using Bytes = std::vector<int>;

constexpr int kController = 0x20;  // the address of the management controller

// What records call units and the sensors that measure in them.
struct RecordUnit {
  std::string_view symbol;
  int unit;
  int type;
  int exponent;  // the unit of the records in that of lists/
};
constexpr RecordUnit kRecordUnits[] = {
    {"C", 1, 0x01, 0},  {"F", 2, 0x01, 0},    {"V", 4, 0x02, 0},    {"A", 5, 0x03, 0},
    {"W", 6, 0x0B, 0},  {"J", 7, 0x0B, 0},    {"RPM", 18, 0x04, 0}, {"Hz", 19, 0x0B, 0},
    {"s", 22, 0x0B, 0}, {"Pa", 14, 0x0B, -3}, {"CFM", 17, 0x0B, 0}, {"%", 0, 0x0B, 0},
    {"", 0, 0x0B, 0}};

const RecordUnit& RecordUnitOf(const Sensor& sensor) {
  for (const RecordUnit& row : kRecordUnits) {
    if (row.symbol == sensor.unit.symbol) return row;
  }
  return std::end(kRecordUnits)[-1];
}

// The thresholds by their bits, from the lowest: lower non-critical, critical and non-recoverable,
// then the upper ones. THEORY is the nominal reading.
constexpr std::size_t kThresholdCount = 6;
constexpr std::array<language::EntryId, kThresholdCount> kEntryOfBit = {
    language::ENTRY_THRESHOLD_WL, language::ENTRY_THRESHOLD_FL, {},
    language::ENTRY_THRESHOLD_WH, language::ENTRY_THRESHOLD_FH, {}};

// A sensor with the bytes that its limits become.
struct CodedSensor {
  const Sensor& sensor;
  const RecordUnit& unit;
  ByteCode code;
  std::array<int, kThresholdCount> bytes = {};
  int mask = 0;  // the thresholds that the sensor has
  int nominal = 0;
  bool has_nominal = false;
};

void Encode(const SensorLimit& limit, const Amount& amount, CodedSensor& coded, Account& account) {
  const int byte = coded.code.ByteFor(amount);
  for (std::size_t bit = 0; bit < kThresholdCount; ++bit) {
    if (kEntryOfBit[bit] != limit.row->source) continue;
    coded.bytes[bit] = byte & 0xFF;
    coded.mask |= 1 << bit;
  }
  if (limit.row->source == language::ENTRY_THEORY) {
    coded.nominal = byte & 0xFF;
    coded.has_nominal = true;
  }
  AccountForLimit(coded.sensor, limit, amount, coded.code.AmountOf(byte).Text(), account);
}

CodedSensor Coded(const Sensor& sensor, Account& account) {
  CodedSensor coded{sensor, RecordUnitOf(sensor), {}};
  std::vector<Amount> amounts;
  for (const SensorLimit& limit : sensor.limits) {
    amounts.push_back(limit.amount);
    // An unknown unit is that of the machine.
    amounts.back().exponent +=
        coded.unit.symbol.empty() ? -sensor.unit.exponent : coded.unit.exponent;
  }
  coded.code = CodeFor(amounts);
  for (std::size_t i = 0; i < amounts.size(); ++i)
    Encode(sensor.limits[i], amounts[i], coded, account);
  return coded;
}

// The names of records: short, without what is not ASCII, each once.
class RecordNames {
 public:
  std::string Add(std::string_view name) {
    const std::string plain = PlainText(name);
    const std::string wanted = plain.substr(0, kMost);
    std::string unique = wanted;
    while (!taken_.insert(unique).second) {
      const std::string suffix = '~' + std::to_string(++counts_[wanted]);
      unique = plain.substr(0, kMost - suffix.size()) + suffix;
    }
    return unique;
  }

 private:
  static constexpr std::size_t kMost = 16;

  static std::string PlainText(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
      const support::Character character = support::FirstCharacter(text);
      text.remove_prefix(character.bytes.size());
      const bool is_plain = character.code >= 0x20 && character.code < 0x7F;
      plain += is_plain ? character.bytes.front() : '_';
    }
    return plain;
  }

  std::set<std::string> taken_;
  std::map<std::string, int> counts_;
};

// A full sensor record, byte by byte as the IPMI standard has it under that name.
Bytes RecordOf(const CodedSensor& coded, int number, int lun, const std::string& name) {
  constexpr int kHeader = 5;
  constexpr int kEightBits = 0xC0;  // for each character
  const ByteCode& code = coded.code;
  const int notation = (code.is_signed ? 0x80 : 0) | (coded.unit.symbol == "%" ? 1 : 0);
  Bytes record = {0, 0, 0x51, 0x01, 0};  // the ID is for the repository; the length follows
  const auto add = [&](std::initializer_list<int> bytes) {
    record.insert(record.end(), bytes.begin(), bytes.end());
  };
  add({kController, lun, number, 0x07, 0x01});  // on the system board
  add({0x55, 0x48, coded.unit.type, 0x01});     // it has thresholds, which can be set
  add({0, 0, 0, 0, coded.mask, coded.mask});    // no events
  add({notation, coded.unit.unit, 0, 0});       // linear
  add({code.step, (code.step >> 8) << 6, 0, 0, 0, code.exponent * 16});
  add({coded.has_nominal ? 1 : 0, coded.nominal, 0, 0});
  add({code.is_signed ? 0x7F : 0xFF, code.is_signed ? 0x80 : 0});
  record.insert(record.end(), coded.bytes.rbegin(), coded.bytes.rend());
  add({0, 0, 0, 0, 0});  // no hysteresis
  add({kEightBits | static_cast<int>(name.size())});
  record.insert(record.end(), name.begin(), name.end());
  record[kHeader - 1] = static_cast<int>(record.size()) - kHeader;
  return record;
}

void WriteSensor(const CodedSensor& coded, int number, int lun, const std::string& name,
                 support::TextStream& out) {
  out +=
      fmt::format("sensor_add {:#x} {} {} {:#x} 0x01\n", kController, lun, number, coded.unit.type);
  out += fmt::format("sensor_set_threshold {:#x} {} {} settable {:06b}", kController, lun, number,
                     coded.mask);
  for (auto byte = coded.bytes.rbegin(); byte != coded.bytes.rend(); ++byte)
    out += fmt::format(" {:#04x}", *byte);
  out += fmt::format("\nmain_sdr_add {:#x}", kController);
  for (const int byte : RecordOf(coded, number, lun, name))
    out += fmt::format(" {:#04x}", byte & 0xFF);
  out += '\n';
}

}  // namespace

void WriteIpmiSdr(const machine::Machine& machine, Account& account, support::TextStream& out) {
  out += fmt::format(
      "mc_setbmc {0:#x}\nmc_add {0:#x} 0 has-device-sdrs 0 0 0 0x9f 0 0\nsel_enable {0:#x} 100 "
      "0x0a\n",
      kController);
  // Logical units of the controller that have sensors of their own, each with its numbers.
  constexpr int kUnits[] = {0, 1, 3};
  constexpr std::size_t kNumbers = 255;
  std::size_t count = 0;
  RecordNames names;
  for (const Sensor& sensor : SensorsOf(machine)) {
    if (count == kNumbers * std::size(kUnits)) break;
    const std::string name = names.Add(sensor.section.name());
    if (name == sensor.section.name()) {
      account.Used(sensor.section, RUX_ENTRY_NAME);
    } else {
      account.Changed(sensor.section, RUX_ENTRY_NAME, name, losses::Reason::kShortened);
    }
    WriteSensor(Coded(sensor, account), static_cast<int>(count % kNumbers),
                kUnits[count / kNumbers], name, out);
    ++count;
  }
  out += fmt::format("mc_enable {:#x}\n", kController);
}

}  // namespace rux::exports
