#include <cstdint>
#include <cstdio>
#include <optional>
#include <set>
#include <string>

#include "ruxcomp/model.h"
#include "ruxcomp/query.h"
#include "tests/cross/transcript.h"

namespace {

constexpr std::uint32_t kLastSelector = 0x1B0000;

// What there is to look for.
std::set<std::string> names = {"", "0", "no such name"};
std::set<std::uint32_t> numbers = {0, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

void Print(const tagTBLDATA& data) {
  std::printf(" %08X/%u", data.index, gcGetLastError());
  if (data.kind == RUX_DATA_NUMBER) {
    std::printf("=%u", data.data.number);
    numbers.insert(data.data.number);
  } else if (data.kind == RUX_DATA_STRING) {
    std::printf("='%s'", data.data.string);
    names.insert(data.data.string);
  }
}

void Compare(ruxcomp::Value value, const tagTBLDATA& data) {
  const bool is_same = value.index() == data.index && value.kind() == data.kind &&
                       (data.kind != RUX_DATA_NUMBER || value.number() == data.data.number) &&
                       (data.kind != RUX_DATA_STRING || value.text() == data.data.string);
  if (!is_same) std::printf(" model: %08X", value.index());
}

void PrintEntry(GCENTRY handle, ruxcomp::Entry entry) {
  const std::uint32_t count = gcGetValueCount(handle);
  std::printf("   entry %08X, %u values:", entry.identifier(), count);
  for (std::uint32_t i = 0; i <= count; ++i) {
    const tagTBLDATA data = gcGetValueByIndex(handle, i);
    Print(data);
    if (i < count) Compare(entry.value(i), data);
  }
  for (std::uint32_t selector = 0; selector <= kLastSelector; selector += 0x10000) {
    for (std::uint32_t i = 0; i < 3; ++i) {
      const tagTBLDATA data = gcGetValueByID(handle, selector + i);
      if (gcGetLastError() == RUX_ERROR_OK) {
        std::printf(" %05X", selector + i);
        Print(data);
      }
      Compare(entry.part(selector + i), data);
    }
  }
  std::printf("\n");
}

void PrintSection(GCSECTION handle, ruxcomp::Section section) {
  std::printf(" section %08X %u: '%s', %u entries\n", section.kind(), section.ordinal(),
              section.name().data(), gcGetEntryCount(handle));
  for (std::uint32_t i = 0; i < gcGetEntryCount(handle); ++i) {
    std::uint32_t identifier = 0;
    PrintEntry(gcGetEntryByIndex(handle, i, &identifier), section.entries()[i]);
  }
}

// Which section it is, by the name of its first entry with one.
void PrintFound(const char* question, GCSECTION handle, ruxcomp::Section section) {
  if (handle == nullptr && !section) return;
  std::printf("  %s: %u entries, section %u%s\n", question, gcGetEntryCount(handle),
              section.ordinal(), (handle == nullptr) == !section ? "" : ", model differs");
}

void PrintLookups(std::uint32_t kind, const ruxcomp::Model& model) {
  std::printf(" look-ups of %08X\n", kind);
  for (const std::string& name : names) {
    PrintFound(name.c_str(), gcGetSectByName(kind, name), model.section_named(kind, name));
  }
  for (const std::uint32_t number : numbers) {
    PrintFound(std::to_string(number).c_str(), gcGetSectByID(kind, number),
               model.section_with_id(kind, number));
  }
}

void PrintTables(const ruxcomp::Model& model) {
  std::uint8_t cells[RUX_TABLE_CELLS];
  for (std::uint32_t i = 0; gcGetTableData(i, cells) != 0; ++i) {
    std::printf(" table %u:", i);
    const ruxcomp::TableCells* const same = model.table(i);
    for (std::size_t c = 0; c < RUX_TABLE_CELLS; ++c) {
      if (cells[c] != 0) std::printf(" %zu=%u", c, cells[c]);
      if (same == nullptr || (*same)[c] != cells[c]) std::printf(" model differs");
    }
    std::printf("\n");
  }
  // Times 256, these have no room in 32 bits.
  for (const std::uint32_t ordinal : {0x01000000u, 0x80000000u, 0xFFFFFFFFu}) {
    std::printf(" table %u: %u\n", ordinal, gcGetTableData(ordinal, cells));
  }
  for (const std::string& name : names) {
    const std::uint32_t index = gcGetGroupIndex(name);
    if (index != 0xFFFFFFFF) std::printf(" group %s: %u\n", name.c_str(), index);
  }
}

}  // namespace

void PrintAnswers(const std::string& meta) {
  tagMETAFILEINFO info = {};
  std::printf("gcInit %u", gcInit(meta, &info));
  std::printf(", version %08X, time %u\n", info.version, info.creationTime);
  const std::optional<ruxcomp::Model> model = ruxcomp::Model::LoadVerified(meta);
  if (!model) return void(std::printf("no model\n"));
  for (std::uint32_t kind = RUX_SECT_MORVRUX; kind <= RUX_SECT_INCLUDE; ++kind) {
    for (std::uint32_t i = 0; i < gcGetSectCount(kind); ++i) {
      PrintSection(gcGetSectByIndex(kind, i), model->sections(kind)[i]);
    }
  }
  for (std::uint32_t kind = RUX_SECT_MORVRUX; kind <= RUX_SECT_INCLUDE; ++kind) {
    PrintLookups(kind, *model);
  }
  PrintTables(*model);
  gcUnInit();
}
