// A loaded meta file as a model of its own, for hosts that read many values.
//
//   const std::optional<ruxcomp::Model> model = ruxcomp::Model::Load("board.meta");
//   if (!model) return Fail(gcGetLastError());
//   for (const ruxcomp::Section sensor : model->sections(RUX_SECT_SENSOR)) {
//     const ruxcomp::Value limit = sensor.entry(RUX_ENTRY_THRESHOLD_FH).value();
//     if (limit) std::printf("%s: %u\n", sensor.name().data(), limit.number());
//   }
//   const ruxcomp::Section fan = model->section_named(RUX_SECT_SENSOR, "FAN_1");
//   for (const ruxcomp::Entry entry : fan.entries()) {
//     for (const ruxcomp::Value value : entry.values()) { ... }
//   }
//
// A Model gives the answers of the query functions (query.h), without their last-error codes:
//
//   gcGetSectCount            sections(kind).size()
//   gcGetSectByIndex          sections(kind)[ordinal]
//   gcGetSectByID, ...ByName  section_with_id(kind, id), section_named(kind, name)
//   gcGetGroupIndex           group_index(name)
//   gcGetTableData            table(ordinal)
//   gcGetEntryCount           Section::entries().size()
//   gcGetEntryByIndex         Section::entries()[ordinal]
//   gcGetEntryByType, ByName  Section::entry(identifier), entry_named(name)
//   gcGetValueCount           Entry::values().size()
//   gcGetValueByIndex, ByID   Entry::value(n), part(selector)
//
// Where these answer with a null handle or a value of kind RUX_DATA_NONE, a Section, Entry or Value
// is false; whatever it is asked is empty or none, too: chains of questions need no tests between.
// Accessors throw nothing. Only making a model takes memory, and throws std::bad_alloc.
//
// Lifetime: a Model owns all that it tells, and nothing changes it. Sections, entries, values,
// texts and ranges are small, are passed by value, and are good for as long as their Model, also
// when that is moved; neither gcUnInit nor another gcInit touches them. There may be any number of
// models.
//
// Threads: making a model asks the library, so it belongs on the library's thread. What is made may
// be read on any number of threads.
//
// Cost: making a model takes a time and memory in proportion to the file, less than gcInit took.
// Sections by ID and by name are looked up by hash, and so are the entries of large sections; those
// of small ones are walked over. What a value stands for is read from arrays, without a search.
#ifndef RUXCOMP_MODEL_H_
#define RUXCOMP_MODEL_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ruxcomp/model/builder.h"
#include "ruxcomp/model/capture.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/query.h"

namespace ruxcomp {

class Model {
 public:
  // Of nothing; a model that was moved away is such a one, too.
  Model() noexcept = default;

  // Of what the builder was given; that is used up then.
  explicit Model(ModelBuilder&& builder) : records_(builder.Take()) {}

  // What gcInit loaded; after one that failed, what it could read. Leaves the last-error code as it
  // is. The library's data may be released then.
  static Model OfLoaded() { return Model(detail::CaptureLoaded()); }

  // Loads a meta file and leaves none loaded in the library: one that was, is released. `info` is
  // for gcInit. None when gcInit refuses the file; gcGetLastError tells its code.
  static std::optional<Model> Load(const std::string& path, tagMETAFILEINFO* info = nullptr) {
    struct ReleaseAtEnd {
      ~ReleaseAtEnd() { gcUnInit(); }
    } const release;
    gcUnInit();
    if (gcInit(path, info) == 0) return std::nullopt;
    return OfLoaded();
  }

  // Of every kind of language/sections.def, one kind after the other in the order of that list;
  // `kind` is a RUX_SECT_.... Those of a kind are in the order of the script. Sections of other
  // kinds, which only damaged files hold, are left out.
  Sections sections() const noexcept { return SectionsBetween(0, detail::Records::kKinds); }
  Sections sections(std::uint32_t kind) const noexcept {
    const std::uint32_t i = kind - RUX_SECT_MORVRUX;
    return i < detail::Records::kKinds ? SectionsBetween(i, i + 1) : Sections();
  }

  // The first section of the kind that has that ID.
  Section section_with_id(std::uint32_t kind, std::uint32_t id) const noexcept {
    return records_ ? Section(records_->SectionWithId(kind, id)) : Section();
  }

  // The first section of the kind that has that NAME; for PROPERTY, GLOBAL and REPEATER also the
  // first that has an entry of that name.
  Section section_named(std::uint32_t kind, std::string_view name) const noexcept {
    return records_ ? Section(records_->SectionNamed(kind, name)) : Section();
  }

  // The ordinal of the group with that name, as a sensor's PARENT value carries it in the low 24
  // bits of its index; "0" is the root group 0. None when there is no such group.
  std::optional<std::uint32_t> group_index(std::string_view name) const noexcept;

  // The cells of the ordinal-th TABLE section; null when there is none.
  const TableCells* table(std::uint32_t ordinal) const noexcept {
    return records_ && ordinal < records_->cells.size() ? &records_->cells[ordinal] : nullptr;
  }

 private:
  Sections SectionsBetween(std::size_t begin_kind, std::size_t end_kind) const noexcept {
    if (!records_) return Sections();
    const std::uint32_t begin = records_->kind_begin[begin_kind];
    return {{records_->sections.data() + begin}, records_->kind_begin[end_kind] - begin};
  }

  std::unique_ptr<const detail::Records> records_;
};

inline std::optional<std::uint32_t> Model::group_index(std::string_view name) const noexcept {
  if (records_) {
    const detail::SectionRecord* group = records_->SectionNamed(RUX_SECT_GROUP, name);
    if (group != nullptr) return OrdinalOf(group->name);
  }
  // The root group has an index but no section.
  if (name == language::kRootGroup) return 0;
  return std::nullopt;
}

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_H_
