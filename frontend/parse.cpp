#include "frontend/parse.h"

#include <dlfcn.h>

#include "frontend/messages.h"
#include "frontend/plugin.h"
#include "frontend/report.h"
#include "frontend/section.h"

CRUXParse::CRUXParse() : pluginHandle(dlopen(plugin::kPath, RTLD_LAZY)) {
  if (!pluginHandle) Report<msg::kLoadFailed>(std::string(plugin::kPath));
}

CRUXParse::~CRUXParse() {
  if (pluginHandle) dlclose(pluginHandle);
}

std::uint32_t CRUXParse::Start(const std::string& path) {
  fileHandle = RSOpenFile(path);
  if (!fileHandle) return 0;
  RSParse(fileHandle);
  filePath = path;
  return 1;
}

void CRUXParse::Parse() {
  // Also when a number raises an error on the way: a script that stayed open could not be opened
  // again.
  struct CloseAtEnd {
    CRUXParse& parse;
    ~CloseAtEnd() { parse.Close(); }
  } closeAtEnd{*this};

  std::uint32_t index = 0;
  while (void* handle = RSEnumSection(fileHandle, index)) ParseSection(handle, index++);
  Report<msg::kNoMoreSections>(index);
}

void CRUXParse::ParseSection(void* handle, std::uint32_t index) {
  std::string sectionName;
  std::uint32_t line = 0;
  if (!RSGetSectInfo(handle, sectionName, line)) {
    Report<msg::kSectionNameFailed>(index + 1, index);
    return;
  }
  CRUXSection* section = CRUXSection::Create(filePath, sectionName, line);
  if (!section) {
    Report<msg::kCreateSectionFailed>(index + 1, sectionName);
    return;
  }
  ParseItems(handle, sectionName, *section);
}

void CRUXParse::ParseItems(void* handle, const std::string& sectionName, CRUXSection& section) {
  std::string key;
  std::string value;
  for (std::uint32_t index = 0;; ++index) {
    std::uint32_t line = 0;
    if (!RSEnumItem(handle, index, key, value, line)) break;
    if (section.SetEntry(filePath, key, value, line)) continue;
    Report<msg::kAddItemFailed>(index + 1, sectionName);
    Report<msg::kEntryIgnored>(section.GetFile(0), line, section.name, key);
  }
  section.ReleaseRoom();
}

void CRUXParse::Close() {
  if (fileHandle) RSCloseFile(fileHandle);
  fileHandle = nullptr;
  filePath.clear();
}

void CRUXParse::End() { CRUXSection::Destory(); }
