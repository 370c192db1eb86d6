// What the reader did in a run: the scripts that it opened, and those that it could not open.
#ifndef READER_ARCHIVE_H_
#define READER_ARCHIVE_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "reader/script.h"
#include "reader/source.h"

namespace ruxcomp::reader {

// An item of an archived script.
struct ArchivedItem {
  std::size_t script;  // its place in Archive::scripts()
  ItemPlace place;
};

// The item that includes a script: the last one that was delivered, of the open scripts, when the
// script was opened. None for a main script.
using Includer = std::optional<ArchivedItem>;

struct ArchivedScript {
  std::string path;    // what it is called
  std::string opened;  // the path under which it was found
  Includer includer;
  std::shared_ptr<Script> script;  // null when it was never parsed, or did not fit into memory
  std::vector<Problem> problems;   // in the order in which they were reported
};

enum class Refusal {
  kNotFound,
  kCannotBeRead,
  kIsFolder,
  kIsStream,  // a pipe or a device
  kIsOpenAlready,
  kTooMany,
  kTooLarge,
  kOutOfMemory,
};

struct RefusedScript {
  std::string path;  // where it was looked for
  Refusal reason;
  int error;  // the system's error number; 0 when the reader itself refused
  Includer includer;
  std::size_t opened_before;  // how many scripts were opened before
};

// While one lives, it keeps every script that is opened, even after it is closed. There is at most
// one at a time.
class Archive {
 public:
  Archive();
  ~Archive();
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  // In the order in which they were opened: the n-th one belongs to the n-th RSOpenFile that
  // returned a handle. A script that is opened again with the same text has the same Script.
  const std::vector<ArchivedScript>& scripts() const { return scripts_; }
  const std::vector<RefusedScript>& refused() const { return refused_; }

 private:
  friend class ScriptFile;

  static Archive* Current();  // the one there is, or null

  // The parsed script with that source and text; null when there is none.
  const ArchivedScript* FindParsed(const SourceIdentity& identity, const std::string& text) const;
  void KeepParsed(std::size_t index, const SourceIdentity& identity,
                  const std::shared_ptr<Script>& script);

  const std::uint64_t id_;  // no other archive has it
  std::vector<ArchivedScript> scripts_;
  std::vector<RefusedScript> refused_;
  std::map<SourceIdentity, std::size_t> parsed_;  // the last one of each source
};

}  // namespace ruxcomp::reader

#endif  // READER_ARCHIVE_H_
