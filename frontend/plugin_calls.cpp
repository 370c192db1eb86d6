// The plug-in's operations: looked up by name, called with its protocol.
#include <dlfcn.h>

#include <algorithm>

#include "frontend/parse.h"
#include "frontend/plugin.h"

namespace {

plugin::Lookup* lookup = plugin::ExportedOperations;

// Null when the plug-in, or for a null handle the process, exports none of that name.
template <class Operation>
void Find(void* handle, const char* name, Operation*& operation) {
  operation = reinterpret_cast<Operation*>(dlsym(handle, name));
}

// A text that the plug-in fills: made in the size that it asked for, cut at the terminating zero.
void MakeRoom(std::string& text, std::uint32_t size) { text.assign(size, '\0'); }
void CutAtZero(std::string& text) { text.resize(std::min(text.find('\0'), text.size())); }

}  // namespace

plugin::Operations plugin::ExportedOperations(void* handle) {
  Operations found;
  Find(handle, "RSOpenFile", found.openFile);
  Find(handle, "RSParse", found.parse);
  Find(handle, "RSEnumSection", found.enumSection);
  Find(handle, "RSGetSectInfo", found.getSectInfo);
  Find(handle, "RSEnumItem", found.enumItem);
  // The capital E in the middle is how the plug-in spells it.
  Find(handle, "RSFindSEction", found.findSection);
  Find(handle, "RSCloseFile", found.closeFile);
  return found;
}

void plugin::SetLookup(Lookup* chosen) { lookup = chosen ? chosen : ExportedOperations; }

plugin::Operations plugin::OperationsOf(void* handle) { return lookup(handle); }

const plugin::Operations& CRUXParse::Reader() {
  if (!operations) operations = plugin::OperationsOf(pluginHandle);
  return *operations;
}

void* CRUXParse::RSOpenFile(const std::string& path) {
  auto* open = Reader().openFile;
  return open ? open(path) : nullptr;
}

std::uint32_t CRUXParse::RSParse(void* file) {
  auto* parse = Reader().parse;
  return parse ? parse(file) : 0;
}

void* CRUXParse::RSEnumSection(void* file, std::uint32_t index) {
  auto* enumerate = Reader().enumSection;
  return enumerate ? enumerate(file, index, 0) : nullptr;
}

std::uint32_t CRUXParse::RSGetSectInfo(void* section, std::string& name, std::uint32_t& line) {
  auto* getInfo = Reader().getSectInfo;
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
  auto* enumerate = Reader().enumItem;
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
  auto* find = Reader().findSection;
  return find ? find(file, name, 0) : nullptr;
}

std::uint32_t CRUXParse::RSCloseFile(void*& file) {
  auto* close = Reader().closeFile;
  return close ? close(&file) : 0;
}
