// The queries on a loaded debug meta file.
#include "ruxcomp/debug.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "debugmeta/meta_d_file.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/entry_data.h"
#include "frontend/section.h"
#include "frontend/text.h"
#include "frontend/value_records.h"
#include "query/result.h"
#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/records.h"

extern "C" {
std::uint32_t g_dwLastErrorD = 0;
}

namespace ruxcomp::core {

namespace {

// Writes the parts of a payload, separated by commas. Also a visitor for the fields of records.
struct TextWriter {
  char* out;  // null: the parts are counted only
  std::size_t size = 0;
  bool first = true;

  void operator()(std::string_view part) {
    if (!first) Write(",");
    first = false;
    Write(part);
  }
  void operator()(const TextList& list) {
    for (const std::string_view part : list) (*this)(part);
  }
  void operator()(std::monostate) {}
  void operator()(std::uint32_t number) {
    char text[sizeof "0xFFFFFFFF"];
    std::snprintf(text, sizeof text, "0x%lx", static_cast<unsigned long>(number));
    (*this)(std::string_view(text));
  }
  void operator()(const CGeValue& value) {
    if (std::holds_alternative<std::monostate>(value.record())) return;
    (*this)(value.GetStrType());
    VisitValueFields(value.record(), *this);
  }
  void operator()(const RepeaterRecord& record) { VisitFields(record, *this); }

 private:
  void Write(std::string_view text) {
    if (out) std::copy(text.begin(), text.end(), out + size);
    size += text.size();
  }
};

// The value of an entry as a script would write it: parts joined with commas, a number in
// hexadecimal; nothing for a value without a record and for an empty payload. Writes it with a
// terminating zero, unless `out` is null. Allocates nothing. Returns its size without the zero.
std::size_t WriteValueText(const CRuxEntryData& data, char* out) {
  TextWriter writer{out};
  data.Visit(writer);
  if (out) out[writer.size] = '\0';
  return writer.size;
}

// Stores the code and passes the result through. Some answers store their code in the word of the
// compiled side, which is part of the interface, pinned by tests/api/debug_queries_test.cpp.
template <class Value>
Value ResultD(RuxLastError code, Value value) {
  g_dwLastErrorD = code;
  return value;
}
template <class Value>
Value CrossedResult(RuxLastError code, Value value) {
  g_dwLastError = code;
  return value;
}

CRUXSection* RestoredSection(GDSECTION handle) { return static_cast<CRUXSection*>(handle); }
CRUXEntry* RestoredEntry(GDENTRY handle) { return static_cast<CRUXEntry*>(handle); }

// The text of the section's first entry with that identifier, or why there is none.
struct FoundText {
  std::optional<Text> text;
  RuxLastError code;
};
FoundText EntryText(GDSECTION section, std::uint32_t id) {
  if (!section) return {std::nullopt, RUX_ERROR_NO_SECTION};
  if (const CRUXEntry* entry = FindEntry(RestoredSection(section), id)) {
    const std::optional<Text> text = entry->m_RuxEntryData.text();
    return {text, text ? RUX_ERROR_OK : RUX_ERROR_NO_VALUE};
  }
  return {std::nullopt,
          RestoredSection(section)->HasEmptySlot(id) ? RUX_ERROR_NO_VALUE : RUX_ERROR_NO_ENTRY};
}

const char* Answer(const FoundText& found) {
  return ResultD(found.code, found.text ? found.text->c_str() : nullptr);
}

}  // namespace

}  // namespace ruxcomp::core

using namespace ruxcomp::core;

void gdSetLastError(std::uint32_t code) { g_dwLastErrorD = code; }

std::uint32_t gdGetLastError() { return g_dwLastErrorD; }

std::uint32_t gdInit(const std::string& path, tagMETAFILEINFO* info) {
  return ReadMetaD(path, info) ? CrossedResult(RUX_ERROR_OK, 1u) : 0;
}

std::uint32_t gdUnInit() {
  CRUXSection::Destory();
  return 1;
}

GDSECTION gdGetSectByIndex(std::uint32_t section, std::uint32_t ordinal) {
  constexpr GDSECTION kNone = nullptr;
  const auto* head = FindSectHead(SourceSection(section));
  if (!head) return ResultD(RUX_ERROR_NO_SECTION, kNone);
  if (ordinal >= head->size()) return CrossedResult(RUX_ERROR_OUT_OF_RANGE, kNone);
  return ResultD(RUX_ERROR_OK, GDSECTION{(*head)[ordinal]});
}

const char* gdGetSectName(GDSECTION section) { return Answer(EntryText(section, ENTRY_NAME)); }

const char* gdGetSectPName(GDSECTION section) { return Answer(EntryText(section, ENTRY_PARENT)); }

std::uint32_t gdGetSectID(GDSECTION section) {
  const FoundText found = EntryText(section, ENTRY_ID);
  if (!found.text) return ResultD(found.code, kNoNumber);
  std::uint32_t number = 0;
  if (!StringToLong(*found.text, number)) return ResultD(RUX_ERROR_NO_VALUE, kNoNumber);
  return ResultD(RUX_ERROR_OK, number);
}

GDENTRY gdGetEntryByIndex(GDSECTION section, std::uint32_t ordinal) {
  constexpr GDENTRY kNone = nullptr;
  if (!section) return ResultD(RUX_ERROR_NO_SECTION, kNone);
  std::uint32_t count = 0;
  for (CRUXEntry* entry : RestoredSection(section)->entries) {
    if (!IsGiven(entry)) continue;
    if (count++ == ordinal) return ResultD(RUX_ERROR_OK, GDENTRY{entry});
  }
  return CrossedResult(count == 0 ? RUX_ERROR_NO_ENTRY : RUX_ERROR_OUT_OF_RANGE, kNone);
}

const char* gdGetEntryName(GDENTRY entry) {
  constexpr const char* kNone = nullptr;
  if (!entry) return ResultD(RUX_ERROR_NO_ENTRY, kNone);
  return ResultD(RUX_ERROR_OK, RestoredEntry(entry)->name.c_str());
}

std::uint32_t gdGetValue(GDENTRY entry, char* text) {
  if (!entry) return ResultD(RUX_ERROR_NO_ENTRY, 0u);
  const CRuxEntryData& data = RestoredEntry(entry)->m_RuxEntryData;
  if (!text) {
    return ResultD(RUX_ERROR_OK, static_cast<std::uint32_t>(WriteValueText(data, nullptr) + 1));
  }
  // An entry without payload leaves the buffer as it is.
  if (data.HasData()) WriteValueText(data, text);
  return ResultD(RUX_ERROR_OK, 1u);
}
