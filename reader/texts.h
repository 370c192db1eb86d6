// Texts that scripts are read from instead of files: buffers of an editor, revisions of a
// repository, what came on standard input.
#ifndef READER_TEXTS_H_
#define READER_TEXTS_H_

#include <cstdint>
#include <optional>
#include <string>

namespace ruxcomp::reader {

// One table for the process. A script is looked for here before it is looked for in the file
// system, in both by the same rule: under its path as it is, then with backslashes read as
// slashes.
class Texts {
 public:
  struct Text {
    std::string path;  // under which it is in the table
    std::uint64_t id;  // differs from that of every other path's text, also of former ones
    std::string bytes;
  };

  // Replaces the text of the path if there is one; the id stays.
  static void Put(const std::string& path, std::string bytes);
  // False when there is no text of that path.
  static bool Remove(const std::string& path);
  static void Clear();

  // The text that a script of that path is read from; null when it is not read from the table.
  // Valid until the table changes.
  static const Text* Find(const std::string& path);
};

}  // namespace ruxcomp::reader

#endif  // READER_TEXTS_H_
