#include "frontend/parse.h"

#include <dlfcn.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "findings/finding.h"
#include "findings/origin.h"
#include "frontend/plugin.h"
#include "frontend/report.h"
#include "frontend/section.h"

namespace ruxcomp::core {

CRUXParse::CRUXParse() : pluginHandle(dlopen(plugin::kPath, RTLD_LAZY)) {
  if (!pluginHandle) Report<MessageId::kReaderNotLoaded>({}, std::string_view(plugin::kPath));
}

CRUXParse::~CRUXParse() {
  if (pluginHandle) dlclose(pluginHandle);
}

std::uint32_t CRUXParse::Start(const std::string& path) {
  operations_.reset();
  script_ = findings::Origin::kNone;
  fileHandle = nullptr;  // also when opening raises an error
  fileHandle = RSOpenFile(path);
  if (!fileHandle) return 0;
  script_ = m_opened++;
  RSParse(fileHandle);
  filePath = operations_ && operations_->path_of ? operations_->path_of(fileHandle) : path;
  return 1;
}

void CRUXParse::Parse() {
  // Also when a number raises an error: a script that stayed open could not be opened again.
  try {
    ParseSections();
  } catch (...) {
    Close();
    throw;
  }
  Close();
}

void CRUXParse::ParseSections() {
  std::uint32_t index = 0;
  while (void* handle = RSEnumSection(fileHandle, index)) ParseSection(handle, index++);
  Report<MessageId::kEndOfScript>({{script_}}, index);
}

void CRUXParse::ParseSection(void* handle, std::uint32_t index) {
  std::string section_name;
  std::uint32_t line = 0;
  if (!RSGetSectInfo(handle, section_name, line)) {
    Report<MessageId::kUnreadableSectionName>({{script_, index}}, index + 1, index);
    return;
  }
  CRUXSection* section = CRUXSection::Create(filePath, section_name, line);
  if (!section) {
    Report<MessageId::kUnknownSection>({{script_, index}}, index + 1, section_name);
    return;
  }
  section->script = script_;
  section->ordinal = index;
  ParseItems(handle, section_name, *section);
}

void CRUXParse::ParseItems(void* handle, const std::string& section_name, CRUXSection& section) {
  plugin::Item item;
  for (std::uint32_t index = 0; EnumItem(handle, index, item); ++index) {
    section.item = index;
    if (!section.SetEntry(filePath, item.key, item.value, item.line)) {
      ReportRejected(section, section_name, item);
    }
  }
  section.ReleaseRoom();
}

void CRUXParse::ReportRejected(const CRUXSection& section, const std::string& section_name,
                               const plugin::Item& item) {
  findings::Origin origin{section.script, section.ordinal, section.item};
  Report<MessageId::kRejectedItem>({origin}, section.item + 1, section_name);
  const std::string file = section.GetFile(0);
  origin.part = findings::Origin::kKey;
  Report<MessageId::kUnknownEntry>({origin, {}, findings::Place{file, item.line}}, file, item.line,
                                   section.name, item.key);
}

void CRUXParse::Close() {
  // Closed also when the plug-in raises an error over it.
  void* file = std::exchange(fileHandle, nullptr);
  filePath.clear();
  if (file) RSCloseFile(file);
}

void CRUXParse::End() { CRUXSection::Destory(); }

}  // namespace ruxcomp::core
