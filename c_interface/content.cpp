// Sections, entries and values of models.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "c_interface/handles.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/words.h"
#include "ruxmeta.h"

using rux::c_interface::FromC;
using rux::c_interface::ToC;
using ruxcomp::Section;

size_t ruxmeta_section_count(const ruxmeta_model* model, uint32_t kind) {
  return model != nullptr ? model->model.sections(kind).size() : 0;
}

ruxmeta_section ruxmeta_section_at(const ruxmeta_model* model, uint32_t kind, size_t ordinal) {
  return ToC(model != nullptr ? model->model.sections(kind)[ordinal] : Section());
}

ruxmeta_section ruxmeta_find_section_by_id(const ruxmeta_model* model, uint32_t kind, uint32_t id) {
  return ToC(model != nullptr ? model->model.section_with_id(kind, id) : Section());
}

ruxmeta_section ruxmeta_find_section(const ruxmeta_model* model, uint32_t kind, const char* name) {
  const bool can_find = model != nullptr && name != nullptr;
  return ToC(can_find ? model->model.section_named(kind, name) : Section());
}

ruxmeta_section ruxmeta_find_section_text(const ruxmeta_model* model, uint32_t kind,
                                          ruxmeta_text name) {
  const bool can_find = model != nullptr && name.data != nullptr;
  return ToC(can_find ? model->model.section_named(kind, {name.data, name.size}) : Section());
}

uint32_t ruxmeta_section_kind(ruxmeta_section section) { return FromC(section).kind(); }

size_t ruxmeta_section_ordinal(ruxmeta_section section) { return FromC(section).ordinal(); }

ruxmeta_text ruxmeta_section_name(ruxmeta_section section) { return ToC(FromC(section).name()); }

ruxmeta_value ruxmeta_section_id(ruxmeta_section section) {
  return ToC(FromC(section).entry(RUX_ENTRY_ID).value());
}

ruxmeta_section ruxmeta_section_parent(ruxmeta_section section) {
  return ToC(FromC(section).parent());
}

ruxmeta_entries ruxmeta_section_entries(ruxmeta_section section) {
  const ruxcomp::Entries entries = FromC(section).entries();
  if (entries.empty()) return {nullptr, nullptr, 0};
  const ruxmeta_entry first = ToC(*entries.begin());
  return {first.model, first.at, entries.size()};
}

// An entry is where the one before it ends.
int ruxmeta_next_entry(ruxmeta_entries* entries, ruxmeta_entry* entry) {
  if (entries->left == 0) {
    *entry = {nullptr, nullptr};
    return 0;
  }
  *entry = {entries->model, entries->at};
  entries->at = ruxcomp::detail::EntryAfter(static_cast<const ruxcomp::detail::Word*>(entries->at));
  --entries->left;
  return 1;
}

ruxmeta_entry ruxmeta_find_entry(ruxmeta_section section, uint32_t identifier) {
  return ToC(FromC(section).entry(identifier));
}

ruxmeta_entry ruxmeta_find_entry_named(ruxmeta_section section, const char* name) {
  return ToC(name != nullptr ? FromC(section).entry_named(name) : ruxcomp::Entry());
}

uint32_t ruxmeta_entry_identifier(ruxmeta_entry entry) { return FromC(entry).identifier(); }

ruxmeta_text ruxmeta_entry_name(ruxmeta_entry entry) { return ToC(FromC(entry).name()); }

size_t ruxmeta_value_count(ruxmeta_entry entry) { return FromC(entry).values().size(); }

ruxmeta_value ruxmeta_entry_value(ruxmeta_entry entry, size_t n) {
  return ToC(FromC(entry).value(n));
}

size_t ruxmeta_entry_values(ruxmeta_entry entry, ruxmeta_value* values, size_t capacity) {
  const ruxcomp::Values all = FromC(entry).values();
  const auto end = all.begin() + static_cast<std::ptrdiff_t>(std::min(capacity, all.size()));
  for (auto value = all.begin(); value != end; ++value) *values++ = ToC(*value);
  return all.size();
}

ruxmeta_value ruxmeta_entry_part(ruxmeta_entry entry, uint32_t selector) {
  return ToC(FromC(entry).part(selector));
}
