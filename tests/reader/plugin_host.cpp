#include "tests/reader/plugin_host.h"

#include <dlfcn.h>
#include <sys/wait.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <memory>

#include "ruxcomp/api.h"
#include "ruxcomp/output.h"

std::vector<std::string>& Messages() {
  static std::vector<std::string> messages;
  return messages;
}

RUX_API void Output(unsigned int size, const char* format, ...) {
  EXPECT_EQ(size, 2048u);
  std::array<char, 2048> text{};
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text.data(), text.size(), format, arguments);
  va_end(arguments);
  Messages().push_back(text.data());
}

ShellResult Shell(const std::string& command) {
  std::FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  std::string output;
  std::array<char, 256> part;
  while (std::fgets(part.data(), static_cast<int>(part.size()), pipe) != nullptr) {
    output += part.data();
  }
  const int status = pclose(pipe);
  return {output, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

PluginTest::PluginTest() : plugin_(dlopen(RUX_READER_PLUGIN, RTLD_LAZY)) {
  if (plugin_ == nullptr) throw std::runtime_error(dlerror());
  LookUp("RSOpenFile", &open_file);
  LookUp("RSParse", &parse);
  LookUp("RSEnumSection", &enum_section);
  LookUp("RSGetSectInfo", &get_sect_info);
  LookUp("RSEnumItem", &enum_item);
  LookUp("RSFindSEction", &find_section);
  LookUp("RSCloseFile", &close_file);
  Messages().clear();
}

PluginTest::~PluginTest() { dlclose(plugin_); }

template <typename Function>
void PluginTest::LookUp(const char* name, Function* function) {
  *function = reinterpret_cast<Function>(dlsym(plugin_, name));
  if (*function == nullptr) throw std::runtime_error(dlerror());
}

void* PluginTest::Load(const std::string& path) {
  void* file = open_file(path);
  if (file != nullptr) {
    EXPECT_EQ(parse(file), 1u);
  }
  return file;
}

HostSection PluginTest::ReadInfo(void* section) {
  HostSection info{};
  std::uint32_t size = 0;
  EXPECT_NE(get_sect_info(section, nullptr, &size, &info.line), 0u);
  const auto name = std::make_unique<char[]>(size);
  EXPECT_NE(get_sect_info(section, name.get(), &size, &info.line), 0u);
  info.name = name.get();
  EXPECT_EQ(info.name.size() + 1, size);
  return info;
}

bool PluginTest::ReadItem(void* section, std::uint32_t index, HostItem* item) {
  std::uint32_t key_size = 0;
  std::uint32_t value_size = 0;
  if (enum_item(section, index, nullptr, &key_size, nullptr, &value_size, &item->line) == 0) {
    return false;
  }
  const auto key = std::make_unique<char[]>(key_size);
  const auto value = std::make_unique<char[]>(value_size);
  EXPECT_NE(enum_item(section, index, key.get(), &key_size, value.get(), &value_size, &item->line),
            0u);
  item->key = key.get();
  item->value = value.get();
  EXPECT_EQ(item->key.size() + 1, key_size);
  EXPECT_EQ(item->value.size() + 1, value_size);
  return true;
}

std::vector<HostSection> PluginTest::ReadAll(void* file) {
  std::vector<HostSection> sections;
  for (std::uint32_t i = 0; void* handle = enum_section(file, i, 0); ++i) {
    sections.push_back(ReadInfo(handle));
    HostItem item{};
    for (std::uint32_t j = 0; ReadItem(handle, j, &item); ++j) {
      sections.back().items.push_back(item);
    }
  }
  return sections;
}
