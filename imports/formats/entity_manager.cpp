// Configurations of OpenBMC's entity-manager.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/formats.h"
#include "imports/formats/entity_reader.h"
#include "imports/formats/entity_words.h"
#include "imports/formats/json_items.h"
#include "imports/formats/readers.h"
#include "imports/names.h"
#include "losses/ledger.h"
#include "settings/json_file.h"
#include "support/failure.h"

namespace rux::imports {
namespace {

using losses::Reason;
using settings::JsonMember;
using settings::JsonValue;

// A file is one configuration or a list of them.
std::vector<const JsonValue*> ConfigurationsIn(const JsonValue& root, const std::string& path) {
  std::vector<const JsonValue*> configurations;
  if (root.kind == JsonValue::Kind::kObject) configurations.push_back(&root);
  for (const JsonValue& item : root.items) configurations.push_back(&item);
  for (const JsonValue* const configuration : configurations) {
    if (configuration->kind == JsonValue::Kind::kObject) continue;
    throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: expected an object, found {}",
                           path, configuration->line, NameOf(configuration->kind));
  }
  if (!configurations.empty()) return configurations;
  throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: has no configuration", path,
                         root.line);
}

// Interfaces of D-Bus, without what all of them begin with.
std::string PropertyKey(const std::string& area, std::string_view key) {
  constexpr std::string_view kInventory = "xyz.openbmc_project.Inventory.";
  if (key.substr(0, kInventory.size()) == kInventory) key.remove_prefix(kInventory.size());
  key = key.substr(0, kMostNameBytes);
  return area.empty() ? std::string(key) : area + '_' + std::string(key);
}

void ReadConfiguration(const JsonValue& configuration, bool is_only, std::uint32_t file,
                       JsonItems& items, Board& board, losses::Ledger& ledger) {
  const Text name = items.Take(configuration, "Name");
  if (name.text.empty()) return items.Drop(configuration, Reason::kNameless);
  const Origin origin{file, configuration.line, items.PointerOf(configuration)};
  if (is_only) {
    board.name = {name.text, losses::kNoItem};
    board.origin = origin;
  }
  const std::size_t area = board.AreaFor(name, {}, origin);
  NoteTemplate(name, ledger);
  ledger.Used(name.item);  // also when another configuration has the same name
  if (const JsonValue* const exposes = Member(configuration, "Exposes")) {
    const EntityPlace place{area, file, items, board, ledger};
    if (exposes->kind == JsonValue::Kind::kObject) ReadEntity(*exposes, place);
    for (const JsonValue& entry : exposes->items) ReadEntity(entry, place);
  }
  const std::string prefix = is_only ? "" : LegalKey(name.text);
  Facts facts{name.text, origin, {}};
  for (const JsonMember& member : configuration.members)
    items.TakeRest(member.value, PropertyKey(prefix, member.key), facts.properties);
  if (!facts.properties.empty()) board.facts.push_back(std::move(facts));
}

// The templates of all texts that the scripts have as they are.
void NoteTemplates(const std::vector<Property>& properties, losses::Ledger& ledger) {
  for (const Property& property : properties) NoteTemplate(property.value, ledger);
}
void NoteTemplates(const Board& board, losses::Ledger& ledger) {
  for (const Area& area : board.areas) NoteTemplate(area.name, ledger);
  for (const Facts& facts : board.facts) NoteTemplates(facts.properties, ledger);
  for (const Device& device : board.devices) {
    NoteTemplate(device.name, ledger);
    NoteTemplates(device.properties, ledger);
  }
  for (const Sensor& sensor : board.sensors) {
    NoteTemplate(sensor.name, ledger);
    NoteTemplates(sensor.properties, ledger);
    for (const Limit& limit : sensor.limits) NoteTemplates(limit.properties, ledger);
  }
}

}  // namespace

Board ReadEntityManager(const Sources& sources, const ReadOptions&, losses::Ledger& ledger) {
  Board board;
  for (const Source& source : sources) {
    const auto file = static_cast<std::uint32_t>(ledger.files().size());
    ledger.BeginFile(source.path);
    if (board.name.text.empty())
      board.name.text = std::filesystem::path(source.path).stem().string();
    const JsonValue root =
        settings::ParseJson(source.path, source.text, settings::JsonComments::kSkipped);
    JsonItems items(root, ledger);
    const std::vector<const JsonValue*> configurations = ConfigurationsIn(root, source.path);
    const bool is_only = sources.size() == 1 && configurations.size() == 1;
    for (const JsonValue* const configuration : configurations)
      ReadConfiguration(*configuration, is_only, file, items, board, ledger);
  }
  NoteTemplates(board, ledger);
  return board;
}

}  // namespace rux::imports
