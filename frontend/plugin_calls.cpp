// The plug-in's operations behind CRUXParse: looked up by name, called with its protocol.
#include <dlfcn.h>

#include <algorithm>

#include "frontend/parse.h"
#include "frontend/plugin.h"

namespace {

// The operation of that name; null when there is none. A null handle is passed on as it is: it
// finds what the host process itself exports.
template <class Operation>
Operation* Find(void* handle, const char* name) {
  return reinterpret_cast<Operation*>(dlsym(handle, name));
}

// A text that the plug-in fills: made in the size that it asked for, cut at the terminating zero.
void MakeRoom(std::string& text, std::uint32_t size) { text.assign(size, '\0'); }
void CutAtZero(std::string& text) { text.resize(std::min(text.find('\0'), text.size())); }

}  // namespace

void* CRUXParse::RSOpenFile(const std::string& path) {
  auto* open = Find<plugin::RSOpenFile>(pluginHandle, "RSOpenFile");
  return open ? open(path) : nullptr;
}

std::uint32_t CRUXParse::RSParse(void* file) {
  auto* parse = Find<plugin::RSParse>(pluginHandle, "RSParse");
  return parse ? parse(file) : 0;
}

void* CRUXParse::RSEnumSection(void* file, std::uint32_t index) {
  auto* enumerate = Find<plugin::RSEnumSection>(pluginHandle, "RSEnumSection");
  return enumerate ? enumerate(file, index, 0) : nullptr;
}

std::uint32_t CRUXParse::RSGetSectInfo(void* section, std::string& name, std::uint32_t& line) {
  auto* getInfo = Find<plugin::RSGetSectInfo>(pluginHandle, "RSGetSectInfo");
  if (!getInfo) return 0;
  std::uint32_t size = 0;
  // Whether asking for the size counts as a success is the plug-in's choice; that it gave one
  // counts.
  if (!getInfo(section, nullptr, &size, &line) && size == 0) return 0;
  MakeRoom(name, size);
  if (!getInfo(section, name.data(), &size, &line)) return 0;
  CutAtZero(name);
  return 1;
}

std::uint32_t CRUXParse::RSEnumItem(void* section, std::uint32_t index, std::string& key,
                                    std::string& value, std::uint32_t& line) {
  auto* enumerate = Find<plugin::RSEnumItem>(pluginHandle, "RSEnumItem");
  if (!enumerate) return 0;
  std::uint32_t keySize = 0;
  std::uint32_t valueSize = 0;
  if (!enumerate(section, index, nullptr, &keySize, nullptr, &valueSize, &line) && keySize == 0) {
    return 0;
  }
  MakeRoom(key, keySize);
  MakeRoom(value, valueSize);
  if (!enumerate(section, index, key.data(), &keySize, value.data(), &valueSize, &line)) return 0;
  CutAtZero(key);
  CutAtZero(value);
  return 1;
}

void* CRUXParse::RSFindSection(void* file, const std::string& name) {
  // The capital E in the middle is how the plug-in spells it.
  auto* find = Find<plugin::RSFindSection>(pluginHandle, "RSFindSEction");
  return find ? find(file, name, 0) : nullptr;
}

std::uint32_t CRUXParse::RSCloseFile(void*& file) {
  auto* close = Find<plugin::RSCloseFile>(pluginHandle, "RSCloseFile");
  return close ? close(&file) : 0;
}
