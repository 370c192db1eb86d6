// A file that is only in memory.
#ifndef TESTS_DAMAGE_MEMORY_FILE_H_
#define TESTS_DAMAGE_MEMORY_FILE_H_

#include <string>

class MemoryFile {
 public:
  // Throws std::runtime_error when the system has none to give.
  MemoryFile();
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  // For this process and those that it starts.
  const std::string& path() const { return path_; }

  // Throws std::runtime_error when memory is short.
  void Fill(const std::string& bytes) const;

 private:
  const int descriptor_;
  const std::string path_;
};

#endif  // TESTS_DAMAGE_MEMORY_FILE_H_
