#include "tool/meta/meta_view.h"

#include <fmt/format.h>
#include <sys/mman.h>

#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"
#include "tool/compiled/compiled_file.h"
#include "tool/failure.h"
#include "tool/files/descriptor.h"

namespace rux {
namespace {

constexpr std::uint32_t kNoNumber = 0xFFFFFFFF;

// The library opens files by their paths only. By the path of the file, it would read what stands
// there by then; so it is given what was verified, under a path that nobody else has. Only where
// that cannot be (no file may be as large, /proc is not there), the file itself must do.
bool Load(const CompiledFile& file, tagMETAFILEINFO* info) {
  const Descriptor copy(memfd_create("rux", MFD_CLOEXEC));
  const bool is_copied = copy.is_open() && WriteAll(copy.number(), file.bytes());
  if (is_copied && gcInit("/proc/self/fd/" + std::to_string(copy.number()), info) != 0) return true;
  return gcInit(file.path(), info) != 0;
}

}  // namespace

MetaView::MetaView(const std::string& path) : path_(path) {
  if (!Load(CompiledFile(path, Form::kMeta), &info_)) {
    throw Failure(ExitStatus::kTrouble, "cannot load " + path + ": the library does not take it");
  }
#define SYMBOL_TABLE(name, class_byte, key) Invert(RUX_CLASS_##name, g_tbl##name);
#include "ruxcomp/symbol_tables.def"
}

std::uint32_t MetaView::CountOf(const Kind& kind) const { return gcGetSectCount(kind.section); }

std::vector<MetaSection> MetaView::SectionsOf(const Kind& kind) const {
  std::vector<MetaSection> sections;
  const std::uint32_t count = CountOf(kind);
  for (std::uint32_t i = 0; i < count; ++i) {
    // A handle points at the section's record.
    const auto* record = static_cast<const tagGCSECT*>(gcGetSectByIndex(kind.section, i));
    sections.push_back({&kind, i, record});
  }
  return sections;
}

std::optional<std::string> MetaView::NameOf(const MetaSection& section) const {
  const std::optional<Datum> name = FirstValue(section, RUX_ENTRY_NAME);
  if (!name || name->is == Datum::Class::kUnresolved) return std::nullopt;
  return name->text;
}

std::optional<std::uint32_t> MetaView::IdOf(const MetaSection& section) const {
  const std::optional<Datum> id = FirstValue(section, RUX_ENTRY_ID);
  if (!id || id->is != Datum::Class::kNumber) return std::nullopt;
  return id->number;
}

std::string MetaView::KeyOf(const MetaSection& section, const tagGCENTRY& entry) const {
  std::string key =
      KeyText(section.record->identifier, entry.identifier, Resolve(entry.identifier));
  return key.empty() ? fmt::format("(entry 0x{:08X})", entry.identifier) : key;
}

Datum MetaView::Resolve(std::uint32_t index) const {
  if (const std::optional<Datum> immediate = ImmediateDatum(index)) return *immediate;
  if (ClassOfIndex(index) != RUX_CLASS_Dword) {
    const std::string* text = StringOf(index);
    return text == nullptr ? Datum() : TextDatum(index, *text);
  }
  const std::uint32_t ordinal = OrdinalOfIndex(index);
  if (ordinal >= numbers_.size() || numbers_[ordinal] == kNoNumber) return {};
  return NumberDatum(numbers_[ordinal]);
}

void MetaView::Invert(std::uint32_t base, const std::map<std::string, std::uint32_t>& table) {
  std::vector<const std::string*>& strings = strings_[base];
  for (const auto& [key, index] : table) {
    const std::uint32_t ordinal = OrdinalOfIndex(index);
    if (ClassOfIndex(index) != base) continue;
    if (strings.size() <= ordinal) strings.resize(ordinal + 1, nullptr);
    if (strings[ordinal] == nullptr) strings[ordinal] = &key;
  }
}

void MetaView::Invert(std::uint32_t base, const std::map<std::uint32_t, std::uint32_t>& table) {
  for (const auto& [key, index] : table) {
    const std::uint32_t ordinal = OrdinalOfIndex(index);
    if (ClassOfIndex(index) != base) continue;
    if (numbers_.size() <= ordinal) numbers_.resize(ordinal + 1, kNoNumber);
    numbers_[ordinal] = key;
  }
}

std::optional<Datum> MetaView::FirstValue(const MetaSection& section,
                                          std::uint32_t identifier) const {
  for (const tagGCENTRY& entry : section.record->entries) {
    if (entry.identifier == identifier && !entry.values.empty()) {
      return Resolve(entry.values.front());
    }
  }
  return std::nullopt;
}

const std::string* MetaView::StringOf(std::uint32_t index) const {
  const auto names = strings_.find(ClassOfIndex(index));
  if (names == strings_.end() || OrdinalOfIndex(index) >= names->second.size()) return nullptr;
  return names->second[OrdinalOfIndex(index)];
}

}  // namespace rux
