// A meta file as a model of its own, for hosts that read many values.
//
//   ruxcomp::Fault fault;
//   const std::optional<ruxcomp::Model> model = ruxcomp::Model::Open("board.meta", &fault);
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
//
// How one is made:
//
//   Open            of a file, read where the system maps it
//   OpenBytes       of bytes that stay where they are
//   LoadVerified    of a file, read into memory
//   OfVerified      of bytes that the model takes over
//   Load, OfLoaded  of what gcInit loads or has loaded
//
// The first four refuse what is not sound (verify.h) and give the reason. They need no library:
// a program that makes its models by them need not link it.
//
// Errors: accessors throw nothing and need no memory. A query for which there is no memory to build
// an index is answered by a walk. Making a model takes memory and throws std::bad_alloc, which ends
// a program that is built without exceptions. No header needs exceptions or RTTI.
//
// Lifetime: a Model owns all that it returns, except for the bytes that OpenBytes is given, and
// nothing changes it. Sections, entries, values, texts and ranges are small, are passed by value,
// and are valid as long as their Model, even when it is moved; neither gcUnInit nor another
// gcInit touches them. There may be any number of models.
//
// Threads: models that need no library may be made on any thread. Load and OfLoaded call the
// library, so they belong on the library's thread. Any number of threads may read a model.
//
// Cost: opening a file is one pass over its bytes, which verifies it, and memory of 8 bytes for
// each text and number and 4 for each section; LoadVerified and OfLoaded also copy the bytes.
// Sections and entries are read where they are. The first look-up by ID or by name is a walk over
// the sections, the second one builds an index, and from then on they are looked up by hash; so are
// the entries of large sections, while those of small ones are walked over. What a value stands for
// is read from arrays, without a search. An ordinal() is a binary search.
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
#include "ruxcomp/records.h"
#include "ruxcomp/verify.h"

namespace ruxcomp {

class Model {
 public:
  // Empty. A moved-from model is empty, too.
  Model() noexcept = default;

  // Of what the builder was given; the builder is used up then.
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

  // Opens a meta file when it is sound (verify.h). None otherwise: `fault`, unless null, receives
  // the reason, even for a file that cannot be read or is not a regular one (offset 0, record
  // "file"). What the library has loaded stays as it is. Refuses some files that gcInit loads, such
  // as one whose end has become zeros; of all others, it makes the same models as Load.
  //
  // The file is mapped, unless it is small, and must stay as it is while the model lives. A program
  // that writes another file and renames it, as `rux compile` does, leaves it alone. One that
  // writes into the file, as gccOutput does, changes what handles read, where nothing is verified
  // any more; when it truncates the file, the next query raises SIGBUS. Where that can happen,
  // LoadVerified is safe.
  static std::optional<Model> Open(const std::string& path, Fault* fault = nullptr) {
    return Opened([&](auto& kept) { return file::WholeFile(path.c_str()).Map(kept); }, fault);
  }

  // The same of bytes at any address that stay as they are while the model lives: of flash memory,
  // or of a program's own data.
  static std::optional<Model> OpenBytes(std::string_view bytes, Fault* fault = nullptr) {
    return Opened([&](auto& kept) { return kept.Borrow(bytes), std::nullopt; }, fault);
  }

  // The same of a file that is read into memory: what happens to the file afterwards does not
  // matter.
  static std::optional<Model> LoadVerified(const std::string& path, Fault* fault = nullptr) {
    return Opened([&](auto& kept) { return file::WholeFile(path.c_str()).ReadInto(kept); }, fault);
  }

  // The same of bytes that the model takes over.
  static std::optional<Model> OfVerified(std::string bytes, Fault* fault = nullptr) {
    return Opened([&](auto& kept) { return kept.Keep(std::move(bytes)), std::nullopt; }, fault);
  }

  // Format version and creation time of the file that was opened; zeros of any other model.
  tagMETAFILEINFO info() const noexcept { return records_ ? records_->info : tagMETAFILEINFO{}; }

  // Of every kind of language/sections.def, one kind after the other in the order of that list;
  // `kind` is a RUX_SECT_.... Those of a kind are in the order of the script. Sections of other
  // kinds, which only damaged files hold, are left out.
  Sections sections() const noexcept {
    return records_ ? SectionsAt(records_->sections.all()) : Sections();
  }
  Sections sections(std::uint32_t kind) const noexcept {
    return records_ ? SectionsAt(records_->sections.OfKind(kind)) : Sections();
  }

  // The first section of the kind that has that ID.
  Section section_with_id(std::uint32_t kind, std::uint32_t id) const noexcept {
    return records_ ? Section(records_.get(), records_->SectionWithId(kind, id)) : Section();
  }

  // The first section of the kind that has that NAME; for PROPERTY, GLOBAL and REPEATER also the
  // first that has an entry of that name.
  Section section_named(std::uint32_t kind, std::string_view name) const noexcept {
    return records_ ? Section(records_.get(), records_->SectionNamed(kind, name)) : Section();
  }

  // The ordinal of the group with that name, as a sensor's PARENT value carries it in the low 24
  // bits of its index; "0" is the root group 0. None when there is no such group.
  std::optional<std::uint32_t> group_index(std::string_view name) const noexcept;

  // The cells of the ordinal-th TABLE section; null when there is none.
  const TableCells* table(std::uint32_t ordinal) const noexcept {
    return records_ ? records_->CellsOf(ordinal) : nullptr;
  }

  // For libruxmeta: null of an empty model.
  const detail::Records* records() const noexcept { return records_.get(); }

 private:
  explicit Model(std::unique_ptr<const detail::Records> records) : records_(std::move(records)) {}

  template <class Keep>
  static std::optional<Model> Opened(Keep keep, Fault* fault) {
    std::unique_ptr<const detail::Records> opened = detail::Open(keep, fault);
    if (opened == nullptr) return std::nullopt;
    return Model(std::move(opened));
  }

  Sections SectionsAt(detail::SectionList::Places places) const noexcept {
    return {{{records_.get(), places.begin()}}, places.size()};
  }

  std::unique_ptr<const detail::Records> records_;
};

inline std::optional<std::uint32_t> Model::group_index(std::string_view name) const noexcept {
  if (records_) {
    const detail::Word* const group = records_->SectionNamed(RUX_SECT_GROUP, name);
    if (group != nullptr) return OrdinalOf(records_->FirstValue(group, RUX_ENTRY_NAME).index());
  }
  // The root group has an index but no section.
  if (name == language::kRootGroup) return 0;
  return std::nullopt;
}

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_H_
