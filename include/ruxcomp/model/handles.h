// The sections and entries of the read model; see model.h.
#ifndef RUXCOMP_MODEL_HANDLES_H_
#define RUXCOMP_MODEL_HANDLES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "ruxcomp/model/range.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/record_rules.h"

namespace ruxcomp {

class Entry;
class Section;

namespace detail {

struct ValueCursor {
  using Handle = Value;
  Value Get() const noexcept { return model->tables.Resolve(at->Load()); }

  const Records* model = nullptr;
  const Word* at = nullptr;
};

struct EntryCursor {
  using Handle = Entry;
  Entry Get() const noexcept;

  const Records* model = nullptr;
  const EntryRecord* at = nullptr;
};

struct SectionCursor {
  using Handle = Section;
  Section Get() const noexcept;

  const SectionRecord* at = nullptr;
};

}  // namespace detail

using Values = Range<detail::ValueCursor>;
using Entries = Range<detail::EntryCursor>;
using Sections = Range<detail::SectionCursor>;

class Entry {
 public:
  // No entry.
  Entry() noexcept = default;
  explicit Entry(const detail::EntryCursor& place) noexcept : place_(place) {}

  explicit operator bool() const noexcept { return place_.at != nullptr; }

  // A RUX_ENTRY_... or the table index of the entry's name; 0xFFFFFFFF of no entry.
  std::uint32_t identifier() const noexcept { return *this ? place_.at->identifier : 0xFFFFFFFF; }

  // The name that the identifier stands for, without its prefix: "IPMI" of VALUE_IPMI. Empty when
  // there is none, as with every RUX_ENTRY_...; the name of VALUE is empty, too.
  std::string_view name() const noexcept { return identity().text(); }
  bool has_name() const noexcept { return identity().kind() == RUX_DATA_STRING; }

  // The identifier as a value: looked up like the index that it may be.
  Value identity() const noexcept {
    return *this ? place_.model->tables.Resolve(place_.at->identifier) : Value();
  }

  Values values() const noexcept {
    if (!*this) return Values();
    return {{place_.model, words() + 2}, words()[1].Load()};
  }

  // The n-th value, from 0, or the first one: what gcGetValueByIndex answers.
  Value value(std::size_t n) const noexcept { return values()[n]; }
  Value value() const noexcept {
    return *this ? place_.model->tables.Resolve(place_.at->first_value) : Value();
  }

  // The part that a RUX_SELECT_... names: what gcGetValueByID answers.
  Value part(std::uint32_t selector) const noexcept {
    const auto type = [this]() -> std::optional<std::uint32_t> {
      const Value first = value();
      if (first.kind() != RUX_DATA_NUMBER) return std::nullopt;
      return first.number();
    };
    const Selection selected = Select(identifier(), values().size(), selector, type);
    return selected.code == RUX_ERROR_OK ? value(selected.ordinal) : Value();
  }

  friend bool operator==(Entry a, Entry b) noexcept { return a.place_.at == b.place_.at; }
  friend bool operator!=(Entry a, Entry b) noexcept { return !(a == b); }

 private:
  const detail::Word* words() const noexcept { return place_.model->WordsOf(*place_.at); }

  detail::EntryCursor place_;
};

class Section {
 public:
  // No section.
  Section() noexcept = default;
  explicit Section(const detail::SectionRecord* record) noexcept : record_(record) {}

  explicit operator bool() const noexcept { return record_ != nullptr; }

  // A RUX_SECT_...; 0 of no section.
  std::uint32_t kind() const noexcept { return *this ? record_->kind : 0; }

  // Among the sections of its kind, from 0.
  std::uint32_t ordinal() const noexcept { return *this ? record_->ordinal : 0; }

  // The text of its NAME. Empty when there is none.
  std::string_view name() const noexcept { return OwnName().text(); }
  bool has_name() const noexcept { return OwnName().kind() == RUX_DATA_STRING; }

  // The number of its ID.
  std::optional<std::uint32_t> id() const noexcept {
    const Value id = *this ? record_->model->tables.Resolve(record_->id) : Value();
    if (id.kind() != RUX_DATA_NUMBER) return std::nullopt;
    return id.number();
  }

  // In the order of the script.
  Entries entries() const noexcept {
    if (!*this) return Entries();
    return {{record_->model, record_->model->entries.data() + record_->first_entry},
            record_->entry_count};
  }

  // The first entry with that identifier, a RUX_ENTRY_... or a table index.
  Entry entry(std::uint32_t identifier) const noexcept {
    if (!*this) return Entry();
    return Entry({record_->model, record_->model->EntryWith(*record_, identifier)});
  }

  // The first entry with that name: of a property, global, value or repeater, without its prefix.
  Entry entry_named(std::string_view name) const noexcept {
    if (!*this) return Entry();
    return Entry({record_->model, record_->model->EntryNamed(*record_, name)});
  }

  // The GROUP section that its PARENT names; none for the root group.
  Section parent() const noexcept {
    const Value group = entry(RUX_ENTRY_PARENT).value();
    if (group.kind() != RUX_DATA_STRING) return Section();
    return Section(record_->model->SectionNamed(RUX_SECT_GROUP, group.text()));
  }

  friend bool operator==(Section a, Section b) noexcept { return a.record_ == b.record_; }
  friend bool operator!=(Section a, Section b) noexcept { return !(a == b); }

 private:
  Value OwnName() const noexcept {
    return *this ? record_->model->tables.Resolve(record_->name) : Value();
  }

  const detail::SectionRecord* record_ = nullptr;
};

inline Entry detail::EntryCursor::Get() const noexcept { return Entry(*this); }
inline Section detail::SectionCursor::Get() const noexcept { return Section(at); }

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_HANDLES_H_
