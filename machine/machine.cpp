#include "machine/machine.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "machine/meta_model.h"
#include "machine/origins.h"
#include "machine/place.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "settings/limit_rule.h"
#include "settings/project.h"
#include "settings/quantity.h"

namespace rux::machine {
namespace {

namespace language = ruxcomp::language;

// Empty when the sensor does not have it.
std::string PropertyOf(const ruxcomp::Section& sensor, const std::string& name) {
  for (const ruxcomp::Entry entry : sensor.entries()) {
    const bool is_property = language::ClassOf(entry.identifier()) == language::CLASS_Property;
    if (is_property && entry.name() == name) return std::string(entry.value().text());
  }
  return "";
}

}  // namespace

Machine::Machine(std::string name, Place file, std::unique_ptr<ruxcomp::file::KeptBytes> bytes,
                 std::unique_ptr<const Origins> origins,
                 std::shared_ptr<const settings::Project> project)
    : name_(std::move(name)),
      file_(std::move(file)),
      bytes_(std::move(bytes)),
      model_(OpenModel(name_, bytes_->view())),
      origins_(std::move(origins)),
      project_(std::move(project)) {}

std::optional<Place> Machine::PlaceOf(const language::SectionKind& kind, std::size_t ordinal,
                                      std::string_view key) const {
  if (origins_ == nullptr) return std::nullopt;
  return key.empty() ? origins_->OfSection(kind, ordinal) : origins_->OfEntry(kind, ordinal, key);
}

bool Machine::DependsOn(const std::string& property) const {
  if (project_ == nullptr || property.empty()) return false;
  return std::any_of(project_->limits.begin(), project_->limits.end(),
                     [&](const settings::LimitRule& rule) {
                       return rule.unit_property == property || rule.divisor_property == property ||
                              rule.sign_property == property;
                     });
}

Quantity Machine::QuantityOf(const ruxcomp::Section& sensor) const {
  if (project_ == nullptr) return {};
  const ruxcomp::Value type = sensor.entry(RUX_ENTRY_TYPE).value();
  return settings::QuantityOf(
      project_->limits,
      {sensor.name(), type ? std::optional<std::uint64_t>(type.number()) : std::nullopt,
       [&](const std::string& name) { return PropertyOf(sensor, name); }});
}

}  // namespace rux::machine
