#include "imports/skeleton.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/names.h"
#include "losses/ledger.h"
#include "support/failure.h"
#include "support/nearest.h"

namespace rux::imports {
namespace {

Quantity QuantityCalled(const std::string& id) {
  if (const std::optional<Quantity> quantity = FindQuantity(id)) return *quantity;
  std::vector<std::string> ids;
  for (const QuantityRow& row : kQuantities) ids.emplace_back(row.id);
  throw support::Failure(support::ExitStatus::kWrongUsage, "--sensor: no such quantity: {}{}", id,
                         support::NearText(id, ids));
}

// Throws a Failure when a part between slashes is empty.
void ExpectParts(const char* option, const std::string& path) {
  if (!path.empty() && path.front() != '/' && path.back() != '/' &&
      path.find("//") == std::string::npos)
    return;
  throw support::Failure(support::ExitStatus::kWrongUsage, "{}: a group has no name: {}", option,
                         path);
}

// Throws a Failure when sections of a kind would have the same name in scripts.
template <class Sections>
void ExpectDifferentNames(const char* option, const Sections& sections) {
  std::set<std::string> names;
  for (const auto& section : sections) {
    if (names.insert(LegalName(section.name.text)).second) continue;
    throw support::Failure(support::ExitStatus::kWrongUsage, "{}: {} is there twice", option,
                           section.name.text);
  }
}

void AddSensor(Board& board, std::size_t first_area, const std::string& text) {
  const std::size_t equals = text.rfind('=');
  const std::size_t slash = text.rfind('/', equals);
  const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
  if (equals == std::string::npos || equals <= begin) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "--sensor: expected [GROUP/]NAME=QUANTITY, found {}", text);
  }
  ExpectParts("--sensor", text.substr(0, equals));
  Sensor sensor;
  sensor.name.text = text.substr(begin, equals - begin);
  sensor.quantity = QuantityCalled(text.substr(equals + 1));
  sensor.area =
      slash == std::string::npos ? first_area : board.AreaOf(text.substr(0, slash), Origin{});
  board.sensors.push_back(std::move(sensor));
}

}  // namespace

Board SkeletonOf(const SkeletonOptions& options) {
  Board board;
  board.name.text = options.model;
  std::vector<std::string> groups = options.groups;
  if (groups.empty()) groups.emplace_back("BOARD");
  for (const std::string& group : groups) ExpectParts("--group", group);
  for (const std::string& group : groups) board.AreaOf(group, Origin{});
  const std::size_t first = board.AreaOf(groups.front(), Origin{});
  for (const std::string& device : options.devices)
    board.devices.push_back({{device, losses::kNoItem}, {}, {}});
  for (const std::string& sensor : options.sensors) AddSensor(board, first, sensor);
  ExpectDifferentNames("--device", board.devices);
  ExpectDifferentNames("--sensor", board.sensors);
  return board;
}

}  // namespace rux::imports
