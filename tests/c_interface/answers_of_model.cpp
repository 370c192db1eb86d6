// What answers.c prints, through the read model: the same bytes.
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>

#include "ruxcomp/model.h"

namespace {

using ruxcomp::Entry;
using ruxcomp::Model;
using ruxcomp::Section;
using ruxcomp::Value;

void PrintText(std::string_view text) {
  std::printf(" \"");
  for (const char each : text) {
    const auto byte = static_cast<unsigned char>(each);
    const bool is_plain = byte > ' ' && byte < 0x7F && byte != '"' && byte != '\\';
    std::printf(is_plain ? "%c" : "\\%02X", byte);
  }
  std::printf("\"");
}

void PrintValue(Value value) {
  std::printf(" [%" PRIX32, value.index());
  if (value.kind() == RUX_DATA_NUMBER) std::printf(" %" PRIu32, value.number());
  if (value.kind() == RUX_DATA_STRING) PrintText(value.text());
  std::printf("]");
}

void PrintParts(Entry entry) {
  for (std::uint32_t selector = 0; selector <= 0x1A0000; selector += 0x10000) {
    for (std::uint32_t item = selector; item < selector + 4; ++item) {
      const Value part = entry.part(item);
      if (!part) continue;
      std::printf("      part %" PRIX32, item);
      PrintValue(part);
      std::printf("\n");
    }
  }
}

void PrintSection(Section section) {
  std::printf("  section %" PRIX32 " %" PRIu32, section.kind(), section.ordinal());
  PrintText(section.name());
  PrintValue(section.entry(RUX_ENTRY_ID).value());
  if (section.parent()) std::printf(" in %" PRIu32, section.parent().ordinal());
  std::printf(" %zu\n", section.entries().size());
  for (const Entry entry : section.entries()) {
    std::printf("    entry %" PRIX32, entry.identifier());
    PrintText(entry.name());
    for (const Value value : entry.values()) PrintValue(value);
    std::printf(" %zu\n", entry.values().size());
    PrintParts(entry);
    if (section.entry(entry.identifier()) != entry) std::printf("    found before\n");
  }
}

void PrintKind(const Model& model, std::uint32_t kind) {
  std::printf("kind %" PRIX32 " %zu\n", kind, model.sections(kind).size());
  for (const Section section : model.sections(kind)) {
    PrintSection(section);
    const Section named = model.section_named(kind, section.name());
    std::printf("  named %" PRIu32, named.ordinal());
    if (section.id()) {
      const Section with_id = model.section_with_id(kind, *section.id());
      std::printf(" with ID %" PRIu32, with_id.ordinal());
    }
    std::printf("\n");
  }
}

void PrintGroupsAndTables(const Model& model) {
  std::size_t number = 0;
  for (const Section group : model.sections(RUX_SECT_GROUP)) {
    const auto ordinal = model.group_index(group.name());
    if (ordinal) std::printf("group %zu %" PRIu32 "\n", number, *ordinal);
    ++number;
  }
  if (model.group_index("0")) std::printf("root group %" PRIu32 "\n", *model.group_index("0"));
  for (std::uint32_t i = 0; model.table(i) != nullptr; ++i) {
    std::printf("table %" PRIu32, i);
    for (const std::uint8_t cell : *model.table(i)) std::printf(" %02X", cell);
    std::printf("\n");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  ruxcomp::Fault fault;
  const std::optional<Model> model = Model::Open(argv[1], &fault);
  if (!model) {
    // As much as has room in a ruxmeta_fault.
    std::printf("%zu %.255s\n", fault.offset, ruxcomp::FaultText(fault).c_str());
    return 1;
  }
  const tagMETAFILEINFO info = model->info();
  std::printf("version %" PRIX32 " time %" PRIu32 "\n", info.version, info.creationTime);
  for (std::uint32_t kind = RUX_SECT_MORVRUX - 1; kind <= RUX_SECT_REPEATER + 1; ++kind) {
    PrintKind(*model, kind);
  }
  PrintGroupsAndTables(*model);
  return 0;
}
