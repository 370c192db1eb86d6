// The plug-in's operations: looked up by name, called with its protocol.
#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "frontend/parse.h"
#include "frontend/plugin.h"

namespace ruxcomp::core {

namespace {

plugin::Lookup* lookup = plugin::ExportedOperations;

// Null when the plug-in, or for a null handle the process, exports no such operation.
template <class Function>
Function* Find(void* handle, const plugin::Operation<Function>& operation) {
  return reinterpret_cast<Function*>(dlsym(handle, operation.name));
}

// A text that the plug-in fills: made in the size that it asked for, cut at the terminating zero.
void MakeRoom(std::string& text, std::uint32_t size) { text.assign(size, '\0'); }
void CutAtZero(std::string& text) { text.resize(std::min(text.find('\0'), text.size())); }

}  // namespace

const char plugin::kPath[] = RUX_PLUGIN_DIR "libruxrsparser.so.0";

plugin::Operations plugin::ExportedOperations(void* handle) {
  return {Find(handle, kOpenFile),    Find(handle, kParse),    Find(handle, kEnumSection),
          Find(handle, kGetSectInfo), Find(handle, kEnumItem), Find(handle, kFindSection),
          Find(handle, kCloseFile)};
}

void plugin::SetLookup(Lookup* chosen) { lookup = chosen ? chosen : ExportedOperations; }

plugin::Lookup* plugin::CurrentLookup() { return lookup; }

template <class Function>
Function* CRUXParse::Reader(const plugin::Operation<Function>& operation) {
  // What the process itself exports changes with the libraries that it loads; what a plug-in
  // exports does not.
  if (!pluginHandle && plugin::CurrentLookup() == plugin::ExportedOperations) {
    return Find(nullptr, operation);
  }
  if (!operations_) operations_ = plugin::CurrentLookup()(pluginHandle);
  return *operations_.*operation.member;
}

void* CRUXParse::RSOpenFile(const std::string& path) {
  auto* open = Reader(plugin::kOpenFile);
  return open ? open(path) : nullptr;
}

std::uint32_t CRUXParse::RSParse(void* file) {
  auto* parse = Reader(plugin::kParse);
  return parse ? parse(file) : 0;
}

void* CRUXParse::RSEnumSection(void* file, std::uint32_t index) {
  auto* enumerate = Reader(plugin::kEnumSection);
  return enumerate ? enumerate(file, index, 0) : nullptr;
}

std::uint32_t CRUXParse::RSGetSectInfo(void* section, std::string& name, std::uint32_t& line) {
  auto* get_info = Reader(plugin::kGetSectInfo);
  if (!get_info) return 0;
  std::uint32_t size = 0;
  // Whether asking for the size counts as a success is the plug-in's choice; that it gave one
  // counts.
  if (!get_info(section, nullptr, &size, &line) && size == 0) return 0;
  MakeRoom(name, size);
  if (!get_info(section, name.data(), &size, &line)) return 0;
  CutAtZero(name);
  return 1;
}

std::uint32_t CRUXParse::RSEnumItem(void* section, std::uint32_t index, std::string& key,
                                    std::string& value, std::uint32_t& line) {
  auto* enumerate = Reader(plugin::kEnumItem);
  if (!enumerate) return 0;
  std::uint32_t key_size = 0;
  std::uint32_t value_size = 0;
  if (!enumerate(section, index, nullptr, &key_size, nullptr, &value_size, &line) &&
      key_size == 0) {
    return 0;
  }
  MakeRoom(key, key_size);
  MakeRoom(value, value_size);
  if (!enumerate(section, index, key.data(), &key_size, value.data(), &value_size, &line)) return 0;
  CutAtZero(key);
  CutAtZero(value);
  return 1;
}

bool CRUXParse::EnumItem(void* section, std::uint32_t index, plugin::Item& item) {
  item.line = 0;
  if (operations_ && operations_->view_item) {
    return operations_->view_item(section, index, value_, item);
  }
  if (!RSEnumItem(section, index, key_, value_, item.line)) return false;
  item.key = key_;
  item.value = value_;
  return true;
}

void* CRUXParse::RSFindSection(void* file, const std::string& name) {
  auto* find = Reader(plugin::kFindSection);
  return find ? find(file, name, 0) : nullptr;
}

std::uint32_t CRUXParse::RSCloseFile(void*& file) {
  auto* close = Reader(plugin::kCloseFile);
  return close ? close(&file) : 0;
}

}  // namespace ruxcomp::core
