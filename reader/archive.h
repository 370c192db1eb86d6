// What the reader did in a run: every script that it opened, and every one that it could not open.
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

// The item that was delivered last when a script was opened, of the scripts that were open: the one
// that includes it. None for a main script.
using Includer = std::optional<ArchivedItem>;

struct ArchivedScript {
  std::string path;    // as given
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
  std::string path;  // as given
  Refusal reason;
  int error;  // the number by which the system said so; 0 when the reader said so itself
  Includer includer;
  std::size_t opened_before;  // how many scripts were opened before
};

// While one lives, every script that is opened is kept, also when it is closed. There is one at
// most at a time.
class Archive {
 public:
  Archive();
  ~Archive();
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  // In the order in which they were opened: the n-th one belongs to the n-th RSOpenFile that gave a
  // handle. What is opened again and has the same text has the same Script.
  const std::vector<ArchivedScript>& scripts() const { return scripts_; }
  const std::vector<RefusedScript>& refused() const { return refused_; }

 private:
  friend class ScriptFile;

  static Archive* Current();  // the one that lives, or null

  // The archived script with that source and text that was parsed; null when there is none.
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
