// A folder for the files of a fuzz target.
#ifndef FUZZ_SCRATCH_FOLDER_H_
#define FUZZ_SCRATCH_FOLDER_H_

#include <string>
#include <string_view>

namespace fuzz {

// Lives from the constructor to the end of the object, in the folder that TMPDIR names; a process
// that is ended by a find leaves it behind.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string Path(const std::string& name) const { return folder_ + "/" + name; }
  // The same with a backslash before the name: included files are looked for beside such a script.
  std::string ScriptPath(const std::string& name) const { return folder_ + "\\" + name; }

  void Write(const std::string& name, std::string_view bytes) const;
  std::string Read(const std::string& name) const;
  void Remove(const std::string& name) const;  // when it is there

 private:
  std::string folder_;
};

}  // namespace fuzz

#endif  // FUZZ_SCRATCH_FOLDER_H_
