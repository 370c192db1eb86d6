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

// More scripts do not include each other: every INCLUDE that is nested in another one takes some of
// the host's stack.
inline constexpr std::size_t kMostOpen = 1000;

// Nor does a script that includes others, and those others, come to more files or more text in all:
// forty small scripts that include the next one twice each would come to a million millions.
inline constexpr std::size_t kMostOpened = std::size_t{1} << 16;
inline constexpr std::size_t kMostText = kLargestScript;

// Open from Open() to the destructor. While its sections are asked for, the same file is not opened
// again: includes nest, so that it would include itself without end.
class ScriptFile {
 public:
  // Reads the text in memory or the file at `path` or, when there is none, at `path` with its
  // backslashes read as slashes. Pipes and devices are read to their end, but only those that
  // `streams` allows. Returns null when there is no such file, it cannot be read, is a directory or
  // includes another one that is open (under whatever name), and, after a message, when it holds
  // more than `largest` bytes, one of the limits above is reached or memory runs out.
  enum class Streams { kOpen, kAny };  // those that the process has open already; any
  static std::unique_ptr<ScriptFile> Open(const std::string& path,
                                          std::size_t largest = kLargestScript,
                                          Streams streams = Streams::kOpen);
  ~ScriptFile();
  ScriptFile(const ScriptFile&) = delete;
  ScriptFile& operator=(const ScriptFile&) = delete;

  // Scans the text and reports its problems, the first time. False, after a message, when memory
  // runs out.
  bool Parse();

  // Takes note that the sections are asked for: from here on, what is opened may be included by the
  // file. One that was opened and forgotten includes nothing.
  void NoteRequest();

  // Whether there is a file open that may include what is opened next.
  static bool IsAnyIncluding();

  // Takes note of an item of an open file that is being delivered: what is opened next is included
  // by it.
  static void NoteDelivery(const Item& item) { delivered_ = &item; }

  const std::string& path() const { return path_; }       // as given to Open
  const Script* script() const { return script_.get(); }  // null before Parse

 private:
  struct Refused {
    Refusal reason;
    int error;
  };

  ScriptFile(const std::string& path, const Source& source, std::string text);
  static std::unique_ptr<ScriptFile> TryOpen(const std::string& path, std::size_t largest,
                                             Streams streams, Refused& refused);
  static void Refuse(const std::string& path, const Refused& refused);
  static bool IsIncluding(const SourceIdentity& identity);
  static Includer FindIncluder();

  void EnterArchive(const std::string& opened);
  ArchivedScript* archived() const;  // null when there is none
  void Scan();
  void ReportProblem(const Problem& problem) const;
  bool Holds(const Item* item) const;

  // Of an open file, the item that was delivered last.
  static inline const Item* delivered_ = nullptr;

  const std::string path_;
  const SourceIdentity identity_;
  std::string text_;  // empty from Parse on
  std::shared_ptr<Script> script_;
  ScriptFile* next_open_;
  bool is_including_ = false;
  const Item* includer_;         // the item that was delivered last when the file was opened
  std::uint64_t archive_ = 0;    // the archive that it is in; 0: none
  std::size_t archived_at_ = 0;  // its place there
};

}  // namespace ruxcomp::reader

#endif  // READER_SCRIPT_FILE_H_
