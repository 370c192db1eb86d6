// Lists in JSON.
#ifndef LISTS_JSON_LISTS_H_
#define LISTS_JSON_LISTS_H_

#include <string>
#include <string_view>

#include "lists/list.h"

namespace rux::lists {

bool IsJson(std::string_view text);
bool IsRedfish(std::string_view text);

// What lm-sensors prints: chips, their labels, and what it read of each. The columns after chip,
// label and unit are what follows the number in the names of readings: "crit" of "temp1_crit".
// Throws a Failure that names the line.
List ReadSensorsJson(const std::string& path, std::string_view text);

// Every object with a Name and a Reading or thresholds is a sensor, wherever it is. Throws a
// Failure that names the line.
List ReadRedfish(const std::string& path, std::string_view text);

}  // namespace rux::lists

#endif  // LISTS_JSON_LISTS_H_
