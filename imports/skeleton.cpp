#include "imports/skeleton.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "losses/ledger.h"
#include "support/failure.h"
#include "support/nearest.h"

namespace rux::imports {
namespace {

Quantity QuantityCalled(const std::string& id) {
  std::vector<std::string> ids;
  for (std::size_t i = 0; i < std::size(kQuantities); ++i) {
    if (kQuantities[i].id == id) return static_cast<Quantity>(i);
    ids.emplace_back(kQuantities[i].id);
  }
  throw support::Failure(support::ExitStatus::kWrongUsage, "--sensor: no such quantity: {}{}", id,
                         support::NearText(id, ids));
}

void AddSensor(Board& board, std::size_t first_area, const std::string& text) {
  const std::size_t equals = text.rfind('=');
  const std::size_t slash = text.rfind('/', equals);
  const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
  if (equals == std::string::npos || equals <= begin) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "--sensor: expected [GROUP/]NAME=QUANTITY, found {}", text);
  }
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
  for (const std::string& group : groups) board.AreaOf(group, Origin{});
  const std::size_t first = board.AreaOf(groups.front(), Origin{});
  for (const std::string& device : options.devices)
    board.devices.push_back({{device, losses::kNoItem}, {}, {}});
  for (const std::string& sensor : options.sensors) AddSensor(board, first, sensor);
  return board;
}

}  // namespace rux::imports
