// Writing a file piece by piece: a model comes to many times the bytes of its largest part.
#ifndef BACKEND_FILE_WRITER_H_
#define BACKEND_FILE_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

class FileWriter {
 public:
  // Creates the file or empties it; is_open() says whether that went well.
  explicit FileWriter(const std::string& path) : file_(path, std::ios::binary | std::ios::trunc) {}
  ~FileWriter() { Write(); }
  FileWriter(const FileWriter&) = delete;
  FileWriter& operator=(const FileWriter&) = delete;

  bool is_open() const { return file_.is_open(); }

  // What is not written yet, to append to.
  std::vector<std::uint8_t>& bytes() { return bytes_; }

  // To be called after each small part: writes what there is once that is worth a call.
  void WriteWhenLarge() {
    if (bytes_.size() >= kLarge) Write();
  }

  // How many bytes there are, those that are not written yet included.
  std::size_t position() const { return written_ + bytes_.size(); }

  // Writes the rest. False when something could not be written.
  bool Close() {
    Write();
    file_.close();
    return static_cast<bool>(file_);
  }

 private:
  static constexpr std::size_t kLarge = std::size_t{256} << 10;

  void Write() {
    file_.write(reinterpret_cast<const char*>(bytes_.data()),
                static_cast<std::streamsize>(bytes_.size()));
    written_ += bytes_.size();
    bytes_.clear();
  }

  std::ofstream file_;
  std::vector<std::uint8_t> bytes_;
  std::size_t written_ = 0;
};

#endif  // BACKEND_FILE_WRITER_H_
