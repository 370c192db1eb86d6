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

// An access to a bus is known by its numbers: type, operand, number, bus, base, arguments. Each is
// the Bits() of a number: an address is the same with and without a sign.
using AccessKey = std::vector<Number>;

// From 0 up, as a file stores the number in 32 bits; a number that needs more is as it is.
Number Bits(Number number);

// In the order of a script; addresses above 9 and numbers with the top bit of 32 set in
// hexadecimal: "4,0x20,1,1,0".
std::string TextOf(const AccessKey& key);
// The same of parts that need not be known: "5,0x20,1,3,0,unknown".
std::string TextOf(const std::vector<Result>& parts);

// A number that a test gives, or the bits of one: 0xFFFFFFFF may be -1.
struct Reading {
  // cppcheck-suppress noExplicitConstructor; a number, with how it is written
  Reading(Number of, bool bits = false) : number(of), is_bits(bits) {}  // NOLINT
  operator Number() const { return number; }                            // NOLINT

  Number number;
  bool is_bits;  // written in hexadecimal
};

// What is read one after the other, in each round from the first on; the last one again and again.
using Sequence = std::vector<Reading>;

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
  static Reading NumberOf(const std::string& text);

 private:
  std::map<AccessKey, Sequence> accesses_;
  std::map<ValueKey, Sequence> values_;
};

}  // namespace rux::evaluation

#endif  // EVALUATION_READINGS_H_
