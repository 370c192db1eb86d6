// Texts that are read as scripts instead of files: buffers of an editor, revisions of a repository,
// standard input.
#ifndef READER_TEXTS_H_
#define READER_TEXTS_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace ruxcomp::reader {

// One table for the process. A script is looked for here before the file system, in both by the
// same rule: under its path as it is, then with backslashes read as slashes. A text is also found
// under other paths that lead to the same place, through "..", links or the working folder.
class Texts {
 public:
  struct Text {
    std::string path;  // its path in the table
    std::uint64_t id;  // differs from that of every other path, including paths that were removed
    std::string bytes;
  };

  // Replaces the text of the path if there is one; the id stays.
  static void Put(const std::string& path, std::string bytes);
  // False when there is no text of that path.
  static bool Remove(const std::string& path);
  static void Clear();

  // Where scripts are that are in no file: lookup(path with slashes) returns the text of one. No
  // file is read as a script then; null: files are read again.
  using Lookup = std::function<std::optional<std::string>(const std::string& path)>;
  static void ReplaceFiles(Lookup lookup);
  static bool AreFilesReplaced();

  // The text that is read for a script of that path; null when it is not in the table. Valid until
  // the table changes.
  static const Text* Find(const std::string& path);
};

}  // namespace ruxcomp::reader

#endif  // READER_TEXTS_H_
