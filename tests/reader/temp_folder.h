// A folder of its own for each test, gone with the test.
#ifndef TESTS_READER_TEMP_FOLDER_H_
#define TESTS_READER_TEMP_FOLDER_H_

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

class TempFolder {
 public:
  TempFolder() : path_(testing::TempDir() + "rux_reader_XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot make " + path_);
  }
  ~TempFolder() { std::filesystem::remove_all(path_); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  // Writes a file (in a folder that exists) and returns its path.
  std::string Write(const std::string& name, const std::string& text) const {
    const std::string file = *this / name;
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) throw std::runtime_error("cannot write " + file);
    return file;
  }

 private:
  std::string path_;
};

#endif  // TESTS_READER_TEMP_FOLDER_H_
