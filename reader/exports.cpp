#include "reader/exports.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "reader/script.h"
#include "reader/script_file.h"
#include "reader/value.h"

using ruxcomp::reader::CopyCooked;
using ruxcomp::reader::Item;
using ruxcomp::reader::Script;
using ruxcomp::reader::ScriptFile;
using ruxcomp::reader::Section;

namespace {

// A text, how many blanks next to its commas are left out, and the caller's buffer for it.
struct Delivery {
  std::string_view text;
  std::uint32_t blanks_at_commas;
  char* buffer;
  std::uint32_t* size;
};

// The two-call protocol, for any number of texts. The line comes with the texts.
std::uint32_t Deliver(std::initializer_list<Delivery> deliveries, std::uint32_t line,
                      std::uint32_t* line_out) {
  bool asks_sizes = true;
  bool fits = true;
  for (const Delivery& delivery : deliveries) {
    if (delivery.size == nullptr) return 0;
    const auto needed =
        static_cast<std::uint32_t>(delivery.text.size() + 1) - delivery.blanks_at_commas;
    asks_sizes &= delivery.buffer == nullptr;
    fits &= delivery.buffer != nullptr && *delivery.size >= needed;
    *delivery.size = needed;
  }
  if (!fits) return asks_sizes;
  for (const Delivery& delivery : deliveries) {
    *CopyCooked(delivery.text, delivery.blanks_at_commas, delivery.buffer) = '\0';
  }
  if (line_out != nullptr) *line_out = line;
  return 1;
}

// The scanned script of a file handle, for a request for its sections; null for a null handle and
// before RSParse.
const Script* ScriptOf(void* handle) {
  if (handle == nullptr) return nullptr;
  auto& file = *static_cast<ScriptFile*>(handle);
  file.NoteRequest();
  return file.script();
}

// Section handles are opaque to callers and only ever read again.
void* HandleOf(const Section& section) { return const_cast<Section*>(&section); }

}  // namespace

void* RSOpenFile(const std::string& path) { return ScriptFile::Open(path).release(); }

std::uint32_t RSParse(void* file) {
  return file != nullptr && static_cast<ScriptFile*>(file)->Parse() ? 1 : 0;
}

void* RSEnumSection(void* file, std::uint32_t index, std::uint32_t /*reserved*/) {
  const Script* script = ScriptOf(file);
  if (script == nullptr || index >= script->sections().size()) return nullptr;
  return HandleOf(script->sections()[index]);
}

std::uint32_t RSGetSectInfo(void* section, char* name, std::uint32_t* name_size,
                            std::uint32_t* line) {
  if (section == nullptr) return 0;
  const auto& info = *static_cast<const Section*>(section);
  return Deliver({{info.name, 0, name, name_size}}, info.line, line);
}

std::uint32_t RSEnumItem(void* section, std::uint32_t index, char* key, std::uint32_t* key_size,
                         char* value, std::uint32_t* value_size, std::uint32_t* line) {
  if (section == nullptr) return 0;
  const auto& info = *static_cast<const Section*>(section);
  if (index >= info.item_count) return 0;
  const Item& item = info.items[index];
  ScriptFile::NoteDelivery(item);
  return Deliver(
      {{item.key, 0, key, key_size}, {item.value, item.blanks_at_commas, value, value_size}},
      item.line, line);
}

void* RSFindSEction(void* file, const std::string& name, std::uint32_t /*reserved*/) {
  const Script* script = ScriptOf(file);
  if (script == nullptr) return nullptr;
  const auto& sections = script->sections();
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const Section& section) { return section.name == name; });
  return found == sections.end() ? nullptr : HandleOf(*found);
}

std::uint32_t RSCloseFile(void** file) {
  if (file == nullptr || *file == nullptr) return 0;
  delete static_cast<ScriptFile*>(*file);
  *file = nullptr;
  return 1;
}
