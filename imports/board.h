// What sources describe, whatever their format: scripts are written from it.
#ifndef IMPORTS_BOARD_H_
#define IMPORTS_BOARD_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/decimal.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"

namespace rux::imports {

namespace language = ruxcomp::language;

enum class Quantity : std::uint8_t {
#define QUANTITY(name, id, word, code, unit) k##name,
#include "imports/quantities.def"
};

struct QuantityRow {
  std::string_view id;
  std::string_view word;
  std::uint32_t code;
  std::string_view unit;
};
inline constexpr QuantityRow kQuantities[] = {
#define QUANTITY(name, id, word, code, unit) {id, word, code, unit},
#include "imports/quantities.def"
};
constexpr const QuantityRow& RowOf(Quantity quantity) {
  return kQuantities[static_cast<std::size_t>(quantity)];
}

// By its id.
std::optional<Quantity> FindQuantity(std::string_view id);

// The first one whose unit is of the same kind; other, if there is none.
Quantity QuantityIn(std::string_view unit);

// A text of a source with its item, which counts as used or changed once the scripts have the text.
// A format decides only about items that stay out of the board.
struct Text {
  std::string text;
  losses::ItemId item = losses::kNoItem;
};

// Where in the source something is described.
struct Origin {
  std::uint32_t file = 0;  // its place in Ledger::files()
  std::uint32_t line = 0;  // from 1; 0: not known
  std::string path;        // within the file, such as a JSON pointer; may be empty
};

// Written as P_<key>; characters that a key cannot have become underscores.
struct Property {
  std::string key;
  Text value;
};

// A limit or THEORY, in the unit of the sensor. What else the source says about it stands or falls
// with it.
struct Limit {
  language::EntryId entry;  // one of language::kLimitsUpwards
  Decimal amount;
  losses::ItemId item;
  std::vector<losses::ItemId> parts = {};  // that are used if the scripts have the limit
  std::vector<Property> properties = {};   // of the sensor, if the scripts have the limit
};

// A number that the source states as scripts have it: ID, TYPE, INITFLAG, CONTROLMASK.
struct Number {
  language::EntryId entry;
  Text value;
};

// A group: what is in one place.
struct Area {
  Text name;
  std::optional<std::size_t> parent;  // its place in Board::areas, which is before this one
  Origin origin;
};

struct Sensor {
  Text name;
  std::size_t area = 0;               // its place in Board::areas
  std::optional<std::size_t> device;  // its place in Board::devices
  Quantity quantity = Quantity::kOther;
  Text unit;  // empty: that of the quantity
  std::vector<Limit> limits;
  std::vector<Number> numbers;
  std::vector<Property> properties;
  std::string comment;  // what people call it; empty: nothing but its name
  Origin origin;
};

struct Device {
  Text name;
  std::vector<Property> properties;  // chip, bus, address, ...
  Origin origin;
};

// What one place of the source says about the machine.
struct Facts {
  std::string name;  // what the source calls that place
  Origin origin;
  std::vector<Property> properties;
};

class Board {
 public:
  // The place of the area of that title and parent, which is added when the board does not have it.
  std::size_t AreaFor(const Text& title, std::optional<std::size_t> parent, const Origin& from);

  // The place of the innermost one of areas in each other, from the outermost: "BOARD/CPU0".
  std::size_t AreaOf(std::string_view path, const Origin& from);

  Text name;
  Origin origin;            // of the name
  std::vector<Area> areas;  // to be added by these
  std::vector<Device> devices;
  std::vector<Sensor> sensors;
  std::vector<Facts> facts;

 private:
  std::map<std::pair<std::optional<std::size_t>, std::string>, std::size_t> places_;  // of areas
};

// Why a text is not a Decimal: it is not a number, or has too many digits.
losses::Reason WhyNoDecimal(std::string_view text);

// All that the limit has of the source is dropped for that reason.
void DropLimit(const Limit& limit, losses::Reason reason, losses::Ledger& ledger);

// Adds a limit; with a number, that is the amount. If the text is not a number or the sensor has
// that limit already, the limit is dropped: then, returns the reason.
std::optional<losses::Reason> AddLimit(Sensor& sensor, Limit limit, std::string_view number,
                                       losses::Ledger& ledger);
std::optional<losses::Reason> AddLimit(Sensor& sensor, Limit limit, losses::Ledger& ledger);

}  // namespace rux::imports

#endif  // IMPORTS_BOARD_H_
