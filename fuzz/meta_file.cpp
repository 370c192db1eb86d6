// gcInit on arbitrary bytes, then every query, within all bounds and past them; what is searched
// for is found where a walk finds it. A file that the decoder, who knows nothing of the library,
// finds sound must load, and hold what it says; one that the verifier accepts must give a model
// that says the same.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "compiled/meta.h"
#include "fuzz/loaded.h"
#include "fuzz/target.h"
#include "fuzz/walk.h"
#include "query/process_state.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/query.h"
#include "ruxcomp/records.h"
#include "ruxcomp/verify.h"
#include "tests/support/temp_folder.h"

namespace {

using fuzz::Expect;

// Names and IDs of the file's own to look for, but not all of them: looking is a walk over all.
constexpr std::size_t kMostSearches = 16;
std::set<std::string> names;
std::set<std::uint32_t> numbers;

const std::set<std::uint32_t> kSelectors = {
#define SELECTOR_CODE(name, code) code,
#include "ruxcomp/language/selectors.def"
};

void Remember(const tagTBLDATA& data) {
  if (data.kind == RUX_DATA_STRING && names.size() < kMostSearches) names.insert(data.data.string);
  if (data.kind == RUX_DATA_NUMBER && numbers.size() < kMostSearches) {
    numbers.insert(data.data.number);
  }
}

void AskForValues(GCENTRY entry) {
  const std::uint32_t count = gcGetValueCount(entry);
  for (std::uint32_t i = 0; i < count; ++i) {
    fuzz::ExpectValue(entry, i);
    Remember(gcGetValueByIndex(entry, i));
  }
  Expect(gcGetValueByIndex(entry, count).kind == RUX_DATA_NONE, "the last value is the last");
  gcGetValueByIndex(entry, 0xFFFFFFFF);
  for (const std::uint32_t selector : kSelectors) {
    for (const std::uint32_t item : {0u, 1u, count - 1, count}) {
      Remember(gcGetValueByID(entry, selector + item));
    }
  }
}

void AskForEntries(GCSECTION section) {
  const std::uint32_t count = gcGetEntryCount(section);
  for (std::uint32_t i = 0; i < count; ++i) {
    std::uint32_t identifier = 0;
    const GCENTRY entry = gcGetEntryByIndex(section, i, &identifier);
    Expect(entry != nullptr, "every entry is found by its ordinal");
    Expect(gcGetEntryByType(section, identifier) != nullptr,
           "every entry is found by its identifier");
    AskForValues(entry);
  }
  Expect(gcGetEntryByIndex(section, count, nullptr) == nullptr, "the last entry is the last");
  gcGetEntryByType(section, 0xFFFFFFFF);
  for (const std::string& name : names) fuzz::ExpectEntryByName(section, name);
  gcGetEntryByName(section, nullptr, nullptr);
}

// Kind 0 is for all that are none.
void AskForSections(std::uint32_t kind) {
  const std::uint32_t count = gcGetSectCount(kind);
  for (std::uint32_t i = 0; i < count; ++i) {
    const GCSECTION section = gcGetSectByIndex(kind, i);
    Expect(section != nullptr, "every section is found by its ordinal");
    AskForEntries(section);
  }
  Expect(gcGetSectByIndex(kind, count) == nullptr, "the last section is the last");
  for (const std::string& name : names) fuzz::ExpectSectionByName(kind, name);
  for (const std::uint32_t number : numbers) fuzz::ExpectSectionById(kind, number);
  gcGetSectByName(kind, nullptr);
}

void AskWithoutHandles() {
  gcGetEntryCount(nullptr);
  gcGetEntryByIndex(nullptr, 0, nullptr);
  gcGetEntryByType(nullptr, RUX_ENTRY_NAME);
  gcGetEntryByName(nullptr, "", nullptr);
  gcGetValueCount(nullptr);
  gcGetValueByIndex(nullptr, 0);
  gcGetValueByID(nullptr, RUX_SELECT_TYPE);
}

void AskEverything() {
  names = {"", "0"};
  numbers = {0, 0xFFFFFFFF};
  for (std::uint32_t kind = RUX_SECT_MORVRUX - 1; kind <= RUX_SECT_INCLUDE; ++kind) {
    AskForSections(kind);
  }
  for (const std::string& name : names) gcGetGroupIndex(name);
  gcGetGroupIndex(nullptr);
  std::uint8_t cells[RUX_TABLE_CELLS];
  std::uint32_t tables = 0;
  while (gcGetTableData(tables, cells)) ++tables;
  gcGetTableData(0xFFFFFFFF, cells);
  AskWithoutHandles();
}

void SearchEverything() {
  for (std::uint32_t kind = RUX_SECT_MORVRUX; kind <= RUX_SECT_INCLUDE; ++kind) {
    for (const std::string& name : names) fuzz::ExpectSectionByName(kind, name);
    for (const std::uint32_t number : numbers) fuzz::ExpectSectionById(kind, number);
  }
}

// What was released is not found any more: neither in a file that is loaded next nor without one.
void Reload(const std::string& path, std::uint32_t loaded) {
  gcUnInit();
  Expect(gcInit(path) == loaded, "a file loads a second time as it did at first");
  SearchEverything();
  gcUnInit();
  SearchEverything();
  for (std::uint32_t kind = RUX_SECT_MORVRUX; kind <= RUX_SECT_INCLUDE; ++kind) {
    Expect(gcGetSectCount(kind) == 0, "released sections are gone");
  }
}

void ExpectSameValues(ruxcomp::Entry entry, GCENTRY loaded) {
  Expect(entry.values().size() == gcGetValueCount(loaded), "a model has all values");
  std::uint32_t n = 0;
  for (const ruxcomp::Value value : entry.values()) {
    const tagTBLDATA data = gcGetValueByIndex(loaded, n++);
    Expect(value.index() == data.index && value.kind() == data.kind, "a model has the same values");
    if (data.kind == RUX_DATA_NUMBER) {
      Expect(value.number() == data.data.number, "a model has the same numbers");
    } else if (data.kind == RUX_DATA_STRING) {
      Expect(value.text() == data.data.string, "a model has the same texts");
    }
  }
}

// Of a file that is loaded: a model of its bytes says what the queries say.
void ExpectModel(const ruxcomp::Model& model) {
  for (std::uint32_t kind = RUX_SECT_MORVRUX; kind <= RUX_SECT_INCLUDE; ++kind) {
    Expect(model.sections(kind).size() == gcGetSectCount(kind), "a model has all sections");
    for (const ruxcomp::Section section : model.sections(kind)) {
      const GCSECTION loaded = gcGetSectByIndex(kind, section.ordinal());
      Expect(section.entries().size() == gcGetEntryCount(loaded), "a model has all entries");
      std::uint32_t n = 0;
      for (const ruxcomp::Entry entry : section.entries()) {
        ExpectSameValues(entry, gcGetEntryByIndex(loaded, n++, nullptr));
      }
    }
  }
}

void ExpectVerifiedModel(const std::string& bytes, bool decoded, bool loaded) {
  const std::optional<ruxcomp::Model> model = ruxcomp::Model::OfVerified(bytes);
  Expect(model.has_value() == !ruxcomp::Verify(bytes), "sound files, and no others, have models");
  if (!model) return;
  Expect(decoded && loaded, "a file that is verified can be decoded and loaded");
  ExpectModel(*model);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TempFolder folder;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  folder.Write("meta", bytes);
  rux::compiled::Faults faults;
  const rux::compiled::CompiledMeta meta = rux::compiled::DecodeMeta(bytes, faults);

  tagMETAFILEINFO info{};
  const std::uint32_t loaded = gcInit(folder / "meta", &info);
  Expect(gcGetLastError() == (loaded ? RUX_ERROR_OK : RUX_ERROR_CANNOT_READ),
         "the last error says whether the file was loaded");
  if (faults.empty()) {
    Expect(loaded == 1, "a sound file can be loaded");
    Expect(info.version == meta.version && info.creationTime == meta.creation_time,
           "version and creation time are those of the file");
    fuzz::ExpectLoaded(meta);
  }
  ExpectVerifiedModel(std::string(bytes), faults.empty(), loaded == 1);
  AskEverything();  // also of what a damaged file left behind
  Reload(folder / "meta", loaded);
  ruxcomp::core::ResetProcessState();
  return 0;
}
