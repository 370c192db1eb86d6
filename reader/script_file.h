// A script file that a host has open.
#ifndef READER_SCRIPT_FILE_H_
#define READER_SCRIPT_FILE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "reader/archive.h"
#include "reader/script.h"
#include "reader/source.h"

namespace ruxcomp::reader {

// No more scripts than these include each other: every nested INCLUDE takes some of the host's
// stack.
inline constexpr std::size_t kMostOpen = 1000;

// Nor do a script and all that it includes come to more files or more text: forty small scripts
// that each include the next one twice would come to a million millions.
inline constexpr std::size_t kMostOpened = std::size_t{1} << 16;
inline constexpr std::size_t kMostText = kLargestScript;

// Open from Open() to the destructor. While its sections are asked for, the same file is not opened
// again: includes nest, so it would include itself for ever.
class ScriptFile {
 public:
  // Reads the text in memory or the file at `path` or, when there is none, at `path` with its
  // backslashes read as slashes. Pipes and devices are read to their end, but only those that
  // `streams` allows. Returns null when there is no such file, it cannot be read, is a folder or is
  // one of those that include it (under whatever name), and, after a message, when it holds more
  // than `largest` bytes, one of the limits above is reached or memory runs out.
  enum class Streams { kOpen, kAny };  // those that the process already has open; any
  static std::unique_ptr<ScriptFile> Open(const std::string& path,
                                          std::size_t largest = kLargestScript,
                                          Streams streams = Streams::kOpen);
  ~ScriptFile();
  ScriptFile(const ScriptFile&) = delete;
  ScriptFile& operator=(const ScriptFile&) = delete;

  // Scans the text and reports its problems, the first time. False, after a message, when memory
  // runs out.
  bool Parse();

  // Notes that the sections are asked for: from now on, the file may include what is opened. A file
  // that was opened and forgotten includes nothing.
  void NoteRequest();

  // Whether an open file may include what is opened next.
  static bool IsAnyIncluding();

  // Where a script that is opened next by this path is looked for first: beside the file that
  // includes it, wherever that is. The path itself without a script root and include folders.
  static std::string ActualPath(const std::string& path);

  // Notes the item of an open file that is being delivered: it includes what is opened next.
  static void NoteDelivery(const Item& item) { delivered_ = &item; }

  // What the script is called: the path that Open was given or, when the file was found in an
  // include folder, what files there are called.
  const std::string& path() const { return path_; }
  const Script* script() const { return script_.get(); }  // null before Parse

 private:
  struct Refused {
    Refusal reason;
    int error;
  };

  struct Found {
    Source source;
    std::string path;    // what the script is called
    std::string actual;  // where it is
  };

  ScriptFile(const Found& found, std::string text);
  static std::unique_ptr<ScriptFile> TryOpen(const std::string& path, std::size_t largest,
                                             Streams streams, Refused& refused);
  static const ScriptFile* FindIncluding();
  static std::optional<Found> FindScript(const std::string& path);
  static std::optional<Found> FindInFolders(const std::string& path);
  static void Refuse(const std::string& path, const Refused& refused);
  static bool IsIncluding(const SourceIdentity& identity);
  static Includer FindIncluder();

  void EnterArchive(const std::string& opened);
  ArchivedScript* archived() const;  // null when there is none
  void Scan();
  void ReportProblem(const Problem& problem) const;
  bool Holds(const Item* item) const;

  // The item that was delivered last, of an open file.
  static inline const Item* delivered_ = nullptr;

  const std::string path_;
  const std::string actual_path_;  // the folder in it is that of the files that this one includes
  const SourceIdentity identity_;
  std::string text_;  // empty from Parse on
  std::shared_ptr<Script> script_;
  ScriptFile* next_open_;
  bool is_including_ = false;
  const Item* includer_;         // the item that was delivered last when the file was opened
  std::uint64_t archive_ = 0;    // the id of the archive that it is in; 0: none
  std::size_t archived_at_ = 0;  // its place there
};

}  // namespace ruxcomp::reader

#endif  // READER_SCRIPT_FILE_H_
