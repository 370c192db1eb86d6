// Importing again into a folder whose scripts were edited since.
#ifndef IMPORTS_UPDATE_H_
#define IMPORTS_UPDATE_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "imports/layout.h"
#include "imports/merge.h"

namespace rux::imports {

// The file in which an import keeps what it wrote.
inline constexpr char kRecordName[] = ".rux-import.json";

ScriptFile RecordOf(const std::vector<ScriptFile>& files);
// None when the folder has no record. Throws a Failure when it is damaged.
std::optional<std::vector<ScriptFile>> ReadRecord(const std::string& folder);

// Those in the folder, whoever wrote them.
std::vector<ScriptFile> ScriptsIn(const std::string& folder);

// The IDs of the sensors in them, by NAME.
std::map<std::string, std::uint32_t> SensorIdsIn(const std::vector<ScriptFile>& files);

struct FileConflict {
  std::string name;  // of the file
  Conflict conflict;
};

struct Update {
  std::vector<ScriptFile> files;     // as they are to be
  std::vector<std::string> removed;  // names of files that nothing is left of
  std::vector<FileConflict> conflicts;
};

// `record`: of the last import; `written`: by this one. Reads the folder. Throws a Failure.
Update UpdateOf(const std::string& folder, const std::vector<ScriptFile>& record,
                const std::vector<ScriptFile>& written);

}  // namespace rux::imports

#endif  // IMPORTS_UPDATE_H_
