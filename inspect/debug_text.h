// What a debug meta file says, as the script wrote it.
#ifndef INSPECT_DEBUG_TEXT_H_
#define INSPECT_DEBUG_TEXT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/section_names.h"

namespace rux::inspect {

// What follows the "=" of an entry: "CPU0_TEMP", "VT_READ, 0x2E, 8". Texts that a script has to
// quote are quoted; all are shown as by SafeText(). The entry must have been given.
std::string ValueText(const compiled::DebugEntry& entry);

// Entries with the names of the sections whose IDs they give.
class EntryTexts {
 public:
  // The file must outlive this.
  explicit EntryTexts(const compiled::DebugMeta& meta) : meta_(meta), names_(meta) {}

  // "NAME = CPU0_TEMP", "PID = 16 PROCESSOR_0"; "SENSORS = 0x101 CPU0," and "0x102 CPU1": pieces
  // between which a line may be broken. The entry must have been given.
  std::vector<std::string> Of(const compiled::DebugSection& section,
                              const compiled::DebugEntry& entry) const;

  // Of the section whose ID a text of the entry is; empty when it is none.
  std::string NameFor(const compiled::DebugSection& section, const compiled::DebugEntry& entry,
                      const std::string& text) const;

 private:
  const compiled::DebugMeta& meta_;
  const SectionNames names_;
};

// The key of an entry; of one that was not given, its keyword.
std::string KeyText(const compiled::DebugEntry& entry);

// The bits of a notation word by name.
std::vector<std::string> NotationNames(std::uint32_t notation);

// Where the script said something.
class SourcePlaces {
 public:
  explicit SourcePlaces(const compiled::DebugMeta& meta);

  // "boards/board.rux:12", with a path that can be opened from where the script was compiled.
  // "(file 0):12" when the debug meta file has no list of source files.
  std::string Of(const compiled::DebugObject& object) const;

  // The paths of the source files as they are shown.
  const std::vector<std::string>& paths() const { return paths_; }

 private:
  std::vector<std::string> paths_;
};

}  // namespace rux::inspect

#endif  // INSPECT_DEBUG_TEXT_H_
