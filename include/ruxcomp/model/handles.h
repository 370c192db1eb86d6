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
#include "ruxcomp/model/words.h"
#include "ruxcomp/record_rules.h"

namespace ruxcomp {

class Entry;
class Section;

namespace detail {

// At records of equal size.
template <class Record>
struct ArrayCursor {
  void Move(std::ptrdiff_t n) noexcept { at += n; }
  std::ptrdiff_t From(const ArrayCursor& other) const noexcept { return at - other.at; }

  const Records* model = nullptr;
  const Record* at = nullptr;
};

struct ValueCursor : ArrayCursor<Word> {
  using Handle = Value;
  Value Get() const noexcept { return model->tables.Resolve(at->Load()); }
};

struct SectionCursor : ArrayCursor<std::uint32_t> {
  using Handle = Section;
  Section Get() const noexcept;
};

// Entries differ in size: to the next one it is one step, to any other a look-up.
struct EntryCursor {
  using Handle = Entry;
  Entry Get() const noexcept;
  void Move(std::ptrdiff_t n) noexcept {
    ordinal += static_cast<std::uint32_t>(n);
    if (n == 1) {
      at = EntryAfter(at);
    } else if (n != 0) {
      at = ordinal < CountOf(section) ? model->EntryAt(section, ordinal) : nullptr;
    }
  }
  std::ptrdiff_t From(const EntryCursor& other) const noexcept {
    return static_cast<std::ptrdiff_t>(ordinal) - static_cast<std::ptrdiff_t>(other.ordinal);
  }

  const Records* model = nullptr;
  const Word* section = nullptr;
  const Word* at = nullptr;  // anything at the end
  std::uint32_t ordinal = 0;
};

}  // namespace detail

using Values = Range<detail::ValueCursor>;
using Entries = Range<detail::EntryCursor>;
using Sections = Range<detail::SectionCursor>;

class Entry {
 public:
  // No entry.
  Entry() noexcept = default;
  // Null: no entry.
  Entry(const detail::Records* model, const detail::Word* at) noexcept : model_(model), at_(at) {}

  explicit operator bool() const noexcept { return at_ != nullptr; }

  // A RUX_ENTRY_... or the table index of the entry's name; 0xFFFFFFFF for no entry.
  std::uint32_t identifier() const noexcept {
    return *this ? detail::IdentifierOf(at_) : 0xFFFFFFFF;
  }

  // The name that the identifier stands for, without its prefix: "IPMI" of VALUE_IPMI. Empty when
  // there is none, as with every RUX_ENTRY_...; the name of VALUE is empty, too.
  std::string_view name() const noexcept { return identity().text(); }
  bool has_name() const noexcept { return identity().kind() == RUX_DATA_STRING; }

  // The identifier as a value: looked up like the index that it may be.
  Value identity() const noexcept {
    return *this ? model_->tables.Resolve(detail::IdentifierOf(at_)) : Value();
  }

  Values values() const noexcept {
    if (!*this) return Values();
    return {{{model_, at_ + detail::kHeadWords}}, detail::CountOf(at_)};
  }

  // The n-th value, from 0, or the first one: what gcGetValueByIndex returns.
  Value value(std::size_t n) const noexcept { return values()[n]; }
  Value value() const noexcept { return *this ? model_->FirstValue(at_) : Value(); }

  // The part that a RUX_SELECT_... names: what gcGetValueByID returns.
  Value part(std::uint32_t selector) const noexcept {
    const auto type = [this]() -> std::optional<std::uint32_t> {
      const Value first = value();
      if (first.kind() != RUX_DATA_NUMBER) return std::nullopt;
      return first.number();
    };
    const Selection selected = Select(identifier(), values().size(), selector, type);
    return selected.code == RUX_ERROR_OK ? value(selected.ordinal) : Value();
  }

  friend bool operator==(Entry a, Entry b) noexcept { return a.at_ == b.at_; }
  friend bool operator!=(Entry a, Entry b) noexcept { return !(a == b); }

 private:
  const detail::Records* model_ = nullptr;
  const detail::Word* at_ = nullptr;
};

class Section {
 public:
  // No section.
  Section() noexcept = default;
  // Null: no section.
  Section(const detail::Records* model, const detail::Word* at) noexcept : model_(model), at_(at) {}

  explicit operator bool() const noexcept { return at_ != nullptr; }

  // A RUX_SECT_...; 0 for no section.
  std::uint32_t kind() const noexcept { return *this ? detail::IdentifierOf(at_) : 0; }

  // Among the sections of its kind, from 0.
  std::uint32_t ordinal() const noexcept {
    return *this ? model_->sections.OrdinalOf(kind(), model_->PlaceOf(at_)) : 0;
  }

  // The text of its NAME. Empty when there is none.
  std::string_view name() const noexcept { return FirstValue(RUX_ENTRY_NAME).text(); }
  bool has_name() const noexcept { return FirstValue(RUX_ENTRY_NAME).kind() == RUX_DATA_STRING; }

  // The number of its ID.
  std::optional<std::uint32_t> id() const noexcept {
    const Value id = FirstValue(RUX_ENTRY_ID);
    if (id.kind() != RUX_DATA_NUMBER) return std::nullopt;
    return id.number();
  }

  // In the order of the script.
  Entries entries() const noexcept {
    if (!*this) return Entries();
    return {{model_, at_, at_ + detail::kHeadWords, 0}, detail::CountOf(at_)};
  }

  // The first entry with that identifier, a RUX_ENTRY_... or a table index.
  Entry entry(std::uint32_t identifier) const noexcept {
    if (!*this) return Entry();
    return Entry(model_, model_->EntryWith(at_, identifier));
  }

  // The first entry with that name: of a property, global, value or repeater, without its prefix.
  Entry entry_named(std::string_view name) const noexcept {
    if (!*this) return Entry();
    return Entry(model_, model_->EntryNamed(at_, name));
  }

  // The GROUP section that its PARENT names; none for the root group.
  Section parent() const noexcept {
    const Value group = entry(RUX_ENTRY_PARENT).value();
    if (group.kind() != RUX_DATA_STRING) return Section();
    return Section(model_, model_->SectionNamed(RUX_SECT_GROUP, group.text()));
  }

  friend bool operator==(Section a, Section b) noexcept { return a.at_ == b.at_; }
  friend bool operator!=(Section a, Section b) noexcept { return !(a == b); }

 private:
  Value FirstValue(std::uint32_t identifier) const noexcept {
    return *this ? model_->FirstValue(at_, identifier) : Value();
  }

  const detail::Records* model_ = nullptr;
  const detail::Word* at_ = nullptr;
};

inline Entry detail::EntryCursor::Get() const noexcept { return {model, at}; }
inline Section detail::SectionCursor::Get() const noexcept { return {model, model->At(*at)}; }

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_HANDLES_H_
