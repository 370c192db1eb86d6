// What sensors.conf says of chips, statement by statement.
#ifndef IMPORTS_FORMATS_CONF_CHIPS_H_
#define IMPORTS_FORMATS_CONF_CHIPS_H_

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "imports/board.h"
#include "imports/formats/conf_features.h"
#include "imports/formats/formula.h"
#include "losses/ledger.h"

namespace rux::imports {

// A block is a chip statement with the statements that follow it; blocks are numbered from 1.
struct ConfLabel {
  Text text;
  std::size_t block = 0;
};

struct ConfCompute {
  Formula reading;
  bool is_undone;  // by the formula for what is written to the chip
  losses::ItemId item;
  std::size_t block;
};

struct ConfSetting {
  std::string attribute;
  Formula formula;
  losses::ItemId item;
  std::size_t block;
};

// What the statements about a chip say of one of its features.
struct ConfFeature {
  ConfName name;
  Origin origin;
  ConfLabel label;
  std::optional<ConfCompute> compute;
  std::vector<ConfSetting> settings;
  bool is_ignored = false;
  std::vector<losses::ItemId> items;  // of all but what ignores it
};

// The chips that a statement selects, and what holds for them.
struct ConfChip {
  std::string patterns;
  std::size_t device;
  std::vector<ConfFeature> features;  // as they are met
  std::map<std::string, std::size_t, std::less<>> places;

  ConfFeature& For(const ConfName& name, const Origin& origin) {
    const auto [place, is_new] = places.emplace(name.feature, features.size());
    if (is_new) features.push_back({name, origin, {}, {}, {}, false, {}});
    return features[place->second];
  }
};

// Adds a sensor for each feature that is not ignored, and decides about the items of all.
void AddSensors(const ConfChip& chip, Board& board, losses::Ledger& ledger);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_CONF_CHIPS_H_
