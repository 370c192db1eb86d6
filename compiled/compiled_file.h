// Compiled files in memory.
#ifndef COMPILED_COMPILED_FILE_H_
#define COMPILED_COMPILED_FILE_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "compiled/file.h"
#include "compiled/verify.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/kept_bytes.h"
#include "support/failure.h"

namespace rux::compiled {

// In bytes. A larger file is not sound: none is loaded and none is put in place.
inline constexpr std::size_t kLargestFile = std::size_t{256} << 20;

// The failure of a larger one: `what` "cannot load", or another thing that cannot be done.
support::Failure TooLarge(const char* what, const std::string& path);

// Throws a Failure of trouble for what cannot be read, is not a file or is too large. Reads up to
// the end, whatever size the file once had.
std::string ReadWholeFile(const std::string& path);

// The same, with a large file mapped: a look at some of it then costs no copy of all. One that
// becomes shorter while it is looked at ends the process, as trouble.
void MapWholeFile(const std::string& path, KeptBytes& bytes);

// Throws a Failure of trouble for bytes of another form, the reason why those of that path are not
// of the wanted one.
void ExpectForm(const std::string& path, std::string_view bytes, Form wanted);

// The failure of a file with those bytes, which are not sound: what may have happened to it, and
// the first fault.
support::Failure Unsound(const std::string& path, std::string_view bytes);

// A compiled file that is sound. Holds the bytes that were verified: what becomes of the file on
// the disk makes no difference any more.
class CompiledFile {
 public:
  // Of either form, or of the wanted one. Throws a Failure of trouble for what cannot be read, is
  // of another form, or has a fault, which its text says.
  explicit CompiledFile(const std::string& path);
  CompiledFile(const std::string& path, Form wanted);

  const std::string& path() const { return path_; }
  std::string_view bytes() const { return bytes_; }
  Form form() const { return form_; }
  const Summary& summary() const { return summary_; }

 private:
  void ExpectSound();

  const std::string path_;
  std::string bytes_;
  const Form form_;
  Summary summary_;
};

}  // namespace rux::compiled

#endif  // COMPILED_COMPILED_FILE_H_
