// Limits drawn as bands: what is below, between and above them, on a scale that sensors share whose
// limits have one unit and one order of size.
#ifndef PAGE_LIMIT_BANDS_H_
#define PAGE_LIMIT_BANDS_H_

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "machine/machine.h"
#include "page/html.h"

namespace rux::page {

// With all limits of the sensors, zero, and a margin.
struct Scale {
  std::string what;  // a unit, or the TYPE of sensors for which none is stated
  double low;
  double high;
  std::size_t sensors;
};

// An end of a scale, in as many digits as matter.
std::string ScaleEnd(double amount);

class LimitBands {
 public:
  explicit LimitBands(const machine::Machine& machine);

  // A drawing of the sensor's limits; nothing for a sensor without any, and for one with a number
  // whose sign decides what it is and is not known.
  void Write(std::size_t sensor, Html& out) const;

  // The scale of that drawing; null where there is none.
  const Scale* ScaleFor(std::size_t sensor) const;

  // By what they are of: a unit, or the TYPE of sensors for which none is stated, and a size.
  const std::map<std::string, Scale>& scales() const { return scales_; }

 private:
  // Of one sensor, in the order of language::kLimitsUpwards.
  struct Limits {
    std::string what = {};
    std::string scale = {};  // empty: nothing is drawn
    std::vector<std::optional<double>> amounts = {};
  };

  std::vector<Limits> sensors_;
  std::map<std::string, Scale> scales_;
};

}  // namespace rux::page

#endif  // PAGE_LIMIT_BANDS_H_
