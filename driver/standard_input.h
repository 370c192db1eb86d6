// A script that comes from standard input.
#ifndef DRIVER_STANDARD_INPUT_H_
#define DRIVER_STANDARD_INPUT_H_

#include <string>
#include <vector>

#include "diagnostics/output.h"
#include "support/descriptor.h"

namespace rux::driver {

// Kept in memory, for the library to read it under a path and for messages to look at it again. The
// script has a name all the same, which tells the folder of what it includes. The library can only
// be given a path that leads to the memory and begins with that folder; what it then takes for the
// script's name is put right wherever it turns up.
class StandardInput {
 public:
  // Reads to the end. `name`: the library's path of the file that the text stands for. Throws a
  // Failure, also when there is no such folder.
  explicit StandardInput(const std::string& name);

  const std::string& path() const { return path_; }  // under which it can be opened
  const std::string& library_path() const { return library_path_; }

  // Puts the name into what the library said.
  void NameIn(std::vector<diagnostics::Message>& messages) const;

 private:
  const std::string name_;
  const support::Descriptor file_;
  const std::string path_;
  const std::string library_path_;
};

}  // namespace rux::driver

#endif  // DRIVER_STANDARD_INPUT_H_
