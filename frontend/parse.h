// Reading one script through the reader plug-in.
#ifndef FRONTEND_PARSE_H_
#define FRONTEND_PARSE_H_

#include <cstdint>
#include <optional>
#include <string>

#include "findings/origin.h"
#include "frontend/plugin.h"

namespace ruxcomp::core {

class CRUXSection;

class CRUXParse {
 public:
  // Loads the plug-in. A failure is reported, and the object stays usable: it then looks for the
  // operations in the process itself, so that a host may bring its own reader.
  CRUXParse();
  ~CRUXParse();
  CRUXParse(const CRUXParse&) = delete;
  CRUXParse& operator=(const CRUXParse&) = delete;

  // Opens a script; 1, or 0 when the plug-in did not open it. The operations of the plug-in are
  // looked up anew.
  std::uint32_t Start(const std::string& path);

  // Reads the opened script, section by section, into the source model and closes it. A section or
  // item that cannot be taken is reported and left out; reading goes on.
  void Parse();

  // Drops the source model.
  void End();

  // Begins a run: the next script that is opened is number 0.
  static void CountFromZero() { m_opened = 0; }

  // The plug-in's operations; a missing one answers 0 or null without a message.
  void* RSOpenFile(const std::string& path);
  std::uint32_t RSParse(void* file);
  void* RSEnumSection(void* file, std::uint32_t index);
  std::uint32_t RSGetSectInfo(void* section, std::string& name, std::uint32_t& line);
  std::uint32_t RSEnumItem(void* section, std::uint32_t index, std::string& key, std::string& value,
                           std::uint32_t& line);
  void* RSFindSection(void* file, const std::string& name);
  std::uint32_t RSCloseFile(void*& file);

 private:
  void ParseSections();
  void ParseSection(void* handle, std::uint32_t index);
  void ParseItems(void* handle, const std::string& section_name, CRUXSection& section);
  static void ReportRejected(const CRUXSection& section, const std::string& section_name,
                             const plugin::Item& item);
  void Close();

  // The index-th item of a section; false when there is none.
  bool EnumItem(void* section, std::uint32_t index, plugin::Item& item);

  // An operation: of a plug-in, looked up once per script; of the process itself, at every call.
  template <class Function>
  Function* Reader(const plugin::Operation<Function>& operation);

  void* pluginHandle = nullptr;
  void* fileHandle = nullptr;
  std::string filePath;
  std::string key_;  // of the item that was read last
  std::string value_;
  std::optional<plugin::Operations> operations_;
  std::uint32_t script_ = findings::Origin::kNone;  // which one of the run is open

  static std::uint32_t m_opened;  // scripts of the run so far
};

// The object that the exported compile functions work on.
extern CRUXParse g_Parse;

}  // namespace ruxcomp::core

#endif  // FRONTEND_PARSE_H_
