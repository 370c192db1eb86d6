// A reader plug-in that opens whatever it is asked for, hands over one script of its own, and notes
// how it is called. Compiled several times, with something missing or odd each time:
//
//   <export>=Renamed   that export is missing
//   SIZES_ANSWER=0     asking for sizes gives them, but answers 0
//   FAILS_ON_SIZE=n    the size of section n's name cannot be had
//   FAILS_ON_NAME=n    the size can, the name cannot
//   RAISES_ON_CLOSE    closing raises an error
//   TALKS              it reports to Output what a reader may report, and what no other one does
#include <dlfcn.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#ifndef SIZES_ANSWER
#define SIZES_ANSWER 1
#endif
#ifndef FAILS_ON_SIZE
#define FAILS_ON_SIZE -1
#endif
#ifndef FAILS_ON_NAME
#define FAILS_ON_NAME -1
#endif
#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

struct Item {
  const char* key;
  const char* value;
  std::uint32_t line;
};

struct Section {
  int index;
  const char* name;
  std::uint32_t line;
  std::vector<Item> items;
};

const std::vector<Section> script = {
    {0, "GLOBAL", 3, {{"G_A", "x", 4}, {"B", "", 5}}},
    {1, "FOO", 6, {{"C", "z", 7}}},
    {2, "PROPERTY", 8, {{"2", "", 9}}},
};

char file;  // its address is the handle of the one file
std::vector<std::string> calls;

const Section& At(const void* section) { return *static_cast<const Section*>(section); }

std::string Text(std::uint32_t number) { return std::to_string(number); }
std::string Text(const char* buffer) { return buffer ? "buffer" : "null"; }
std::string Text(const std::uint32_t* size) { return Text(*size); }
std::string FileText(const void* handle) {
  return handle == &file ? "file" : handle ? "stranger" : "null";
}
std::string SectionText(const void* handle) {
  return "section " + std::to_string(At(handle).index);
}

void Talk() {
#ifdef TALKS
  using Output = void(unsigned int size, const char* format, ...);
  auto* output = reinterpret_cast<Output*>(dlsym(RTLD_DEFAULT, "Output"));
  if (!output) return;
  output(2048, "Error[%s:%u]: Section header is not closed.\n", "board.rux", 6u);
  output(2048, "%d of %s, 100%%\n", -3, "board.rux");
#endif
}

// Stores the size of a text and, when there is a buffer, copies the text.
void Deliver(const char* text, char* buffer, std::uint32_t* size) {
  *size = static_cast<std::uint32_t>(std::strlen(text) + 1);
  if (buffer) std::memcpy(buffer, text, *size);
}

}  // namespace

// The calls since the last time, as "RSEnumSection(file, 0, 0)".
EXPORT void TakeCalls(std::vector<std::string>* taken) {
  taken->clear();
  taken->swap(calls);
}

EXPORT void* RSOpenFile(const std::string& path) {
  calls.push_back("RSOpenFile(" + path + ")");
  return &file;
}

// The zero must not matter.
EXPORT std::uint32_t RSParse(void* opened) {
  calls.push_back("RSParse(" + FileText(opened) + ")");
  Talk();
  return 0;
}

EXPORT void* RSEnumSection(void* opened, std::uint32_t index, std::uint32_t zero) {
  calls.push_back("RSEnumSection(" + FileText(opened) + ", " + Text(index) + ", " + Text(zero) +
                  ")");
  if (opened != &file || index >= script.size()) return nullptr;
  return const_cast<Section*>(&script[index]);
}

EXPORT std::uint32_t RSGetSectInfo(void* section, char* name, std::uint32_t* size,
                                   std::uint32_t* line) {
  calls.push_back("RSGetSectInfo(" + SectionText(section) + ", " + Text(name) + ", " + Text(size) +
                  ")");
  const Section& info = At(section);
  if (info.index == FAILS_ON_SIZE) return 0;
  if (name && info.index == FAILS_ON_NAME) return 0;
  Deliver(info.name, name, size);
  *line = info.line;
  return name ? 1 : SIZES_ANSWER;
}

EXPORT std::uint32_t RSEnumItem(void* section, std::uint32_t index, char* key,
                                std::uint32_t* keySize, char* value, std::uint32_t* valueSize,
                                std::uint32_t* line) {
  calls.push_back("RSEnumItem(" + SectionText(section) + ", " + Text(index) + ", " + Text(key) +
                  ", " + Text(keySize) + ", " + Text(value) + ", " + Text(valueSize) + ")");
  const Section& info = At(section);
  if (index >= info.items.size()) return 0;
  Deliver(info.items[index].key, key, keySize);
  Deliver(info.items[index].value, value, valueSize);
  *line = info.items[index].line;
  return key ? 1 : SIZES_ANSWER;
}

EXPORT void* RSFindSEction(void* opened, const std::string& name, std::uint32_t zero) {
  calls.push_back("RSFindSEction(" + FileText(opened) + ", " + name + ", " + Text(zero) + ")");
  for (const Section& section : script) {
    if (section.name == name) return const_cast<Section*>(&section);
  }
  return nullptr;
}

EXPORT std::uint32_t RSCloseFile(void** handle) {
  calls.push_back("RSCloseFile(address of " + FileText(*handle) + ")");
#ifdef RAISES_ON_CLOSE
  throw std::runtime_error("cannot close");
#endif
  *handle = nullptr;
  return 7;
}
