// A loaded meta file as a model of its own, for hosts that read many values.
//
//   ruxcomp::Fault fault;
//   const std::optional<ruxcomp::Model> model = ruxcomp::Model::LoadVerified("board.meta", &fault);
//   if (!model) return Fail(ruxcomp::FaultText(fault));
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
// is false. Its accessors return empty or null results, so that calls can be chained unchecked.
// Accessors throw nothing. Only making a model takes memory, and throws std::bad_alloc.
//
// Lifetime: a Model owns all that it answers with, and nothing changes it. Sections, entries,
// values, texts and ranges are small, are passed by value, and are good for as long as their Model,
// also when that is moved; neither gcUnInit nor another gcInit touches them. There may be any
// number of models.
//
// Threads: LoadVerified, OfVerified and ReadModel do without the library and may run on any thread;
// a program that makes its models by them need not link it. Load and OfLoaded ask the library, so
// they belong on the library's thread. What is made may be read on any number of threads.
//
// Cost: making a model takes a time and memory in proportion to the file, less than gcInit took;
// verifying the file first (verify.h) takes about as long again.
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
#include <utility>

#include "ruxcomp/file/whole_file.h"
#include "ruxcomp/model/builder.h"
#include "ruxcomp/model/capture.h"
#include "ruxcomp/model/file.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/query.h"
#include "ruxcomp/verify.h"

namespace ruxcomp {

class Model {
 public:
  // Empty. A moved-from model is empty, too.
  Model() noexcept = default;

  // Of what the builder was given; that is used up then.
  explicit Model(ModelBuilder&& builder) : records_(builder.Take()) {}

  // What gcInit loaded; after one that failed, what it could read. Leaves the last-error code as it
  // is. The library's data may be released then.
  static Model OfLoaded() { return Model(detail::CaptureLoaded()); }

  // Loads a meta file and leaves none loaded in the library: one that was, is released. `info` is
  // for gcInit. None when gcInit refuses the file; gcGetLastError returns its code.
  static std::optional<Model> Load(const std::string& path, tagMETAFILEINFO* info = nullptr) {
    struct ReleaseAtEnd {
      ~ReleaseAtEnd() { gcUnInit(); }
    } const release;
    gcUnInit();
    if (gcInit(path, info) == 0) return std::nullopt;
    return OfLoaded();
  }

  // Reads a meta file and makes a model of it, when it is sound (verify.h). None otherwise:
  // `fault`, unless null, gets the reason, also that of a file that cannot be read or is not a
  // regular one (offset 0, record "file"). What the library has loaded stays as it is. Refuses some
  // files that gcInit loads, such as one whose end became zeros; the models of all others are those
  // that Load makes.
  static std::optional<Model> LoadVerified(const std::string& path, Fault* fault = nullptr);

  // The same of bytes that are in memory. The model keeps them.
  static std::optional<Model> OfVerified(std::string bytes, Fault* fault = nullptr);

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

// The model of bytes that are known to be sound, because they were verified before. Of others, the
// model holds what is before the first fault.
inline Model ReadModel(std::string bytes) { return Model(detail::ReadFile(std::move(bytes))); }

namespace detail {

inline std::nullopt_t Refused(Fault&& found, Fault* fault) {
  if (fault != nullptr) *fault = std::move(found);
  return std::nullopt;
}

}  // namespace detail

inline std::optional<Model> Model::OfVerified(std::string bytes, Fault* fault) {
  if (std::optional<Fault> found = Verify(bytes)) return detail::Refused(std::move(*found), fault);
  return ReadModel(std::move(bytes));
}

inline std::optional<Model> Model::LoadVerified(const std::string& path, Fault* fault) {
  std::string bytes;
  if (std::optional<Fault> found = file::ReadWholeFile(path, bytes)) {
    return detail::Refused(std::move(*found), fault);
  }
  return OfVerified(std::move(bytes), fault);
}

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_H_
