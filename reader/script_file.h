// A script file that a host has open.
#ifndef READER_SCRIPT_FILE_H_
#define READER_SCRIPT_FILE_H_

#include <sys/stat.h>

#include <cstddef>
#include <memory>
#include <string>

#include "reader/scanner.h"

namespace reader {

// Larger scripts are refused: nobody writes them, and a device or an endless pipe must not eat the
// machine's memory.
inline constexpr std::size_t kLargestScript = std::size_t{1} << 30;

// More scripts are not open at once: every INCLUDE that is nested in another one takes some of the
// host's stack.
inline constexpr std::size_t kMostOpen = 1000;

// Nor does a script that includes others, and those others, come to more files or more text in all:
// forty small scripts that include the next one twice each would come to a million millions.
inline constexpr std::size_t kMostOpened = std::size_t{1} << 16;
inline constexpr std::size_t kMostText = kLargestScript;

// Open from Open() to the destructor, also for the purpose of refusing to open a file twice:
// includes nest, so a file that is still open would include itself without end.
class ScriptFile {
 public:
  // Reads the file at `path` or, when there is none, at `path` with its backslashes read as
  // slashes. Pipes are read to their end. Returns null when there is no such file, it cannot be
  // read, is a directory or is open already (under whatever name), and, after a message, when it
  // holds more than `largest` bytes or one of the limits above is reached.
  static std::unique_ptr<ScriptFile> Open(const std::string& path,
                                          std::size_t largest = kLargestScript);
  ~ScriptFile();
  ScriptFile(const ScriptFile&) = delete;
  ScriptFile& operator=(const ScriptFile&) = delete;

  // Scans the text and reports its problems, the first time.
  void Parse();

  const std::string& path() const { return path_; }       // as given to Open
  const Script* script() const { return script_.get(); }  // null before Parse

 private:
  ScriptFile(std::string path, const struct stat& status, std::string text);
  static bool IsOpen(const struct stat& status);

  const std::string path_;
  const dev_t device_;
  const ino_t inode_;
  std::string text_;  // empty from Parse on
  std::unique_ptr<const Script> script_;
  ScriptFile* next_open_;
};

}  // namespace reader

#endif  // READER_SCRIPT_FILE_H_
