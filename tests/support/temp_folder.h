// A folder of its own for a test, gone with it.
#ifndef TESTS_SUPPORT_TEMP_FOLDER_H_
#define TESTS_SUPPORT_TEMP_FOLDER_H_

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

// Is made in the folder that TMPDIR names, and removed with all that is in it. What goes wrong with
// its files is thrown, so that no test goes on without them.
class TempFolder {
 public:
  TempFolder() : path_((std::filesystem::temp_directory_path() / "rux-test-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot make " + path_);
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  // Without a separator at its end.
  const std::string& path() const { return path_; }

  // A path in the folder.
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  // The same with a backslash before the name, as hosts hand scripts to the library: messages then
  // show the name alone, and included files are looked for beside the script.
  std::string ScriptPath(const std::string& name) const { return path_ + "\\" + name; }

  // Writes a file, with the sub-folders of its name, and returns its path.
  std::string Write(const std::string& name, std::string_view bytes) const {
    const std::string file_path = *this / name;
    std::filesystem::create_directories(std::filesystem::path(file_path).parent_path());
    std::ofstream file(file_path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + file_path);
    return file_path;
  }

  std::string Read(const std::string& name) const {
    std::ifstream file(*this / name, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + (*this / name));
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string path_;
};

#endif  // TESTS_SUPPORT_TEMP_FOLDER_H_
