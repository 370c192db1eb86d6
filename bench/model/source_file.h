// Files that are written whole, or throw std::ios_base::failure.
#ifndef BENCH_MODEL_SOURCE_FILE_H_
#define BENCH_MODEL_SOURCE_FILE_H_

#include <fstream>
#include <string>

inline std::ofstream CreateFile(const std::string& path) {
  std::ofstream file;
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file.open(path, std::ios::binary);
  return file;
}

// A file of that name in the folder of another one.
inline std::string Beside(const std::string& path, const std::string& name) {
  return path.substr(0, path.rfind('/') + 1) + name;
}

#endif  // BENCH_MODEL_SOURCE_FILE_H_
