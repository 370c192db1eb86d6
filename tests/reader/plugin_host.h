// What a host of the reader plug-in does: loads it, supplies Output, and reads scripts through it.
#ifndef TESTS_READER_PLUGIN_HOST_H_
#define TESTS_READER_PLUGIN_HOST_H_

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "reader/exports.h"
#include "tests/reader/temp_folder.h"

struct HostItem {
  std::string key;
  std::string value;
  std::uint32_t line;
};

struct HostSection {
  std::string name;
  std::uint32_t line;
  std::vector<HostItem> items;
};

// The messages that Output got so far, formatted.
std::vector<std::string>& Messages();

struct ShellResult {
  std::string output;  // standard error included
  int status;          // -1: killed
};

ShellResult Shell(const std::string& command);

class PluginTest : public testing::Test {
 protected:
  PluginTest();
  ~PluginTest() override;

  // The plug-in's functions, looked up in the built file as the library looks them up.
  decltype(&RSOpenFile) open_file;
  decltype(&RSParse) parse;
  decltype(&RSEnumSection) enum_section;
  decltype(&RSGetSectInfo) get_sect_info;
  decltype(&RSEnumItem) enum_item;
  decltype(&RSFindSEction) find_section;
  decltype(&RSCloseFile) close_file;

  // Opens and parses; null when the plug-in refuses the file.
  void* Load(const std::string& path);
  // By the two-call protocol, with buffers of exactly the size that was asked for.
  HostSection ReadInfo(void* section);  // name and line only
  bool ReadItem(void* section, std::uint32_t index, HostItem* item);
  // All of an open file.
  std::vector<HostSection> ReadAll(void* file);

  // A file of the folder, as a path in which messages find its name.
  std::string Backslashed(const std::string& name) { return folder.path() + "\\" + name; }

  TempFolder folder;

 private:
  template <typename Function>
  void LookUp(const char* name, Function* function);

  void* plugin_;
};

#endif  // TESTS_READER_PLUGIN_HOST_H_
