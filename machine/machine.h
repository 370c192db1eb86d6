// A machine as a whole: what its meta file says, in one model for every command that looks at all
// of it, whatever the machine was read from.
#ifndef MACHINE_MACHINE_H_
#define MACHINE_MACHINE_H_

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "machine/origins.h"
#include "machine/place.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "settings/project.h"
#include "settings/quantity.h"

namespace rux::machine {

using settings::Quantity;

class Machine {
 public:
  // Without any section.
  explicit Machine(std::string name) : name_(std::move(name)), file_{name_} {}
  // Of the bytes of a meta file. Throws a Failure when it is not sound.
  Machine(std::string name, Place file, std::unique_ptr<ruxcomp::file::KeptBytes> bytes,
          std::unique_ptr<const Origins> origins, std::shared_ptr<const settings::Project> project);

  // As the user called it.
  const std::string& name() const { return name_; }
  // What it was read from.
  const Place& file() const { return file_; }
  // Sections, entries and values, with IDs, names and ordinals; value.h has the parts of values.
  const ruxcomp::Model& model() const { return model_; }
  // Null when the machine was read from a file that does not say where anything comes from.
  const Origins* origins() const { return origins_.get(); }
  // Of the ordinal-th section of a kind, or the entry with that key in it. None when it is not
  // known.
  std::optional<Place> PlaceOf(const ruxcomp::language::SectionKind& kind, std::size_t ordinal,
                               std::string_view key = {}) const;

  // Null: there is none.
  const settings::Project* project() const { return project_.get(); }
  // Whether the project states anything about limits.
  bool has_quantities() const { return project_ != nullptr && !project_->limits.empty(); }
  // Whether a property of that name, without P_, can decide what limits are numbers of.
  bool DependsOn(const std::string& property) const;
  // What the project and the sensor's properties state.
  Quantity QuantityOf(const ruxcomp::Section& sensor) const;

 private:
  std::string name_;
  Place file_;
  std::unique_ptr<ruxcomp::file::KeptBytes> bytes_;
  ruxcomp::Model model_;  // of these bytes
  std::unique_ptr<const Origins> origins_;
  std::shared_ptr<const settings::Project> project_;  // null: none
};

}  // namespace rux::machine

#endif  // MACHINE_MACHINE_H_
