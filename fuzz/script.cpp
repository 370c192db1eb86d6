// Script text through the reader, asked as the library asks it, and as no library should.
#include <cstddef>
#include <cstdint>
#include <string>

#include "frontend/parse.h"
#include "fuzz/target.h"
#include "reader/exports.h"
#include "tests/support/temp_folder.h"

using namespace ruxcomp::core;

namespace {

using fuzz::Expect;

// Asks for a section's name with a buffer that is one byte too small.
void AskWithoutRoom(void* section, std::size_t name_length) {
  std::string buffer(name_length, '-');
  auto size = static_cast<std::uint32_t>(name_length);
  std::uint32_t line = 0;
  Expect(!RSGetSectInfo(section, buffer.data(), &size, &line), "a small buffer is refused");
  Expect(size == name_length + 1, "a refusal gives the size that is needed");
  Expect(buffer == std::string(name_length, '-'), "a small buffer is left alone");
}

void AskForItems(void* section, std::uint32_t section_line) {
  std::string key;
  std::string value;
  std::uint32_t index = 0;
  std::uint32_t last_line = section_line;
  std::uint32_t line = 0;
  for (; g_Parse.RSEnumItem(section, index, key, value, line); ++index) {
    Expect(!key.empty(), "no key is empty");
    Expect(line >= last_line, "lines go up");
    last_line = line;
  }
  Expect(!g_Parse.RSEnumItem(section, index + 1, key, value, line), "the last item is the last");
}

void AskForSections(void* file) {
  std::uint32_t index = 0;
  while (void* section = g_Parse.RSEnumSection(file, index++)) {
    std::string name;
    std::uint32_t line = 0;
    Expect(g_Parse.RSGetSectInfo(section, name, line) != 0, "every section has a name and a line");
    Expect(name.find('\0') == std::string::npos, "no text holds a zero byte");
    Expect(g_Parse.RSFindSection(file, name) != nullptr, "every section is found by its name");
    AskWithoutRoom(section, name.size());
    AskForItems(section, line);
  }
  Expect(g_Parse.RSEnumSection(file, index) == nullptr, "the last section is the last");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TempFolder folder;
  folder.Write("script", {reinterpret_cast<const char*>(data), size});
  const std::string path = folder.ScriptPath("script");

  void* file = g_Parse.RSOpenFile(path);
  Expect(file != nullptr, "a script that is there can be opened");
  Expect(g_Parse.RSEnumSection(file, 0) == nullptr, "there are no sections before parsing");
  Expect(g_Parse.RSOpenFile(path) == nullptr, "a script that is being read is not opened again");
  g_Parse.RSParse(file);
  AskForSections(file);
  g_Parse.RSCloseFile(file);
  Expect(file == nullptr, "closing takes the handle back");
  return 0;
}
