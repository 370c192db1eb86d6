// What a test supplies: the readings of accesses, and the numbers of values that are not evaluated.
#ifndef EVALUATION_READINGS_H_
#define EVALUATION_READINGS_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

#include "evaluation/result.h"
#include "evaluation/target.h"
#include "machine/machine.h"

namespace rux::evaluation {

// An access to a bus is known by its numbers: type, operand, number, bus, base, arguments.
using AccessKey = std::vector<Number>;

// In the order of a script, addresses above 9 in hexadecimal: "4,0x20,1,1,0".
std::string TextOf(const AccessKey& key);

// What is read one after the other; the last one again and again.
using Sequence = std::vector<Number>;

// What a reading is of.
using ReadingKey = std::variant<AccessKey, ValueKey>;

class Readings {
 public:
  // What the text names in the machine:
  //
  //   SENSOR/CPU0_TEMP, SENSOR/P12V/VALUE_IPMI, GLOBAL/G_DUTY, G_DUTY   a value
  //   4,0x20,1,1,0  or  VT_READ,LINK_TEMP,1,BUSTYPE_CPULINK,0x30        an access; words are known
  //                                                                    where the script is
  //
  // Throws a Failure of findings when it names nothing.
  static ReadingKey KeyOf(const machine::Machine& machine, const std::string& text);

  // What was given before is replaced; by an empty sequence, with nothing.
  void Set(const ReadingKey& key, Sequence sequence);
  void Set(const machine::Machine& machine, const std::string& key, Sequence sequence) {
    Set(KeyOf(machine, key), std::move(sequence));
  }

  // Null when there is none.
  const Sequence* OfAccess(const AccessKey& key) const;
  const Sequence* OfValue(const ValueKey& key) const;

  // Throws a Failure of wrong usage unless the text is a number, in decimal or hexadecimal.
  static Number NumberOf(const std::string& text);

 private:
  std::map<AccessKey, Sequence> accesses_;
  std::map<ValueKey, Sequence> values_;
};

}  // namespace rux::evaluation

#endif  // EVALUATION_READINGS_H_
