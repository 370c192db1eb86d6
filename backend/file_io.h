// Reading and writing a compiled file piece by piece.
#ifndef BACKEND_FILE_IO_H_
#define BACKEND_FILE_IO_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "ruxcomp/language/words.h"

namespace ruxcomp::core {

// Reads a file word by word, never past its end.
class FileReader {
 public:
  // Opens the file; opened() says whether it succeeded. Only regular files are opened: a pipe would
  // wait for its writer, and some devices start to work when they are opened.
  explicit FileReader(const std::string& path);
  ~FileReader();
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;

  bool opened() const { return file_ >= 0; }

  // Goes to an offset from the start of the file, inside it or not.
  void Seek(std::size_t offset);

  // How many bytes the file has, and how many are left. Check lengths and counts against them
  // before making room for what they announce.
  std::size_t size() const { return size_; }
  std::size_t Remaining() const {
    const std::size_t position = buffered_to_ - Buffered();
    return position < size_ ? size_ - position : 0;
  }

  // Each reads all that is asked for, or answers false when the file ends before that.
  bool Word(std::uint32_t& word) {
    if (Buffered() < sizeof word) return WordAcross(word);
    word = ruxcomp::language::LoadWord(next_);
    next_ += sizeof word;
    return true;
  }
  bool Words(std::vector<std::uint32_t>& words, std::size_t count);  // replaces what is in there
  bool Bytes(void* to, std::size_t size);

  // Appends the text up to the next zero, which is passed over, or to the end of the `size` bytes
  // that may be read; counts those down.
  bool Text(std::string& text, std::size_t& size);

  // Reads as if zeros followed the end of the file, without end.
  void PaddedBytes(void* to, std::size_t size);

 private:
  std::size_t Buffered() const { return static_cast<std::size_t>(end_ - next_); }
  bool Fill();                                   // false at the end of the file
  std::size_t Read(char* to, std::size_t size);  // how much of it could be read
  bool WordAcross(std::uint32_t& word);          // the end of what is buffered

  // Part of the object, and the only buffer: a large block of heap would make the allocator merge
  // the small blocks that the previously loaded file released, just before such blocks are needed
  // again.
  std::array<char, std::size_t{16} << 10> buffer_;
  const char* next_ = buffer_.data();  // it is read up to here
  const char* end_ = buffer_.data();   // and filled up to here
  std::size_t buffered_to_ = 0;        // offset of that end in the file

  const int file_;  // its descriptor; negative: not opened
  std::size_t size_ = 0;
};

// Writes a file piece by piece: a whole file in memory would take many times the largest part.
class FileWriter {
 public:
  // Creates the file or empties it; is_open() says whether it succeeded.
  explicit FileWriter(const std::string& path) : file_(path, std::ios::binary | std::ios::trunc) {}
  ~FileWriter() { Write(); }
  FileWriter(const FileWriter&) = delete;
  FileWriter& operator=(const FileWriter&) = delete;

  bool is_open() const { return file_.is_open(); }

  // The bytes that are not written yet. Append to them.
  std::vector<std::uint8_t>& bytes() { return bytes_; }

  // Call it after each small part: writes the bytes once they are worth a system call.
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

}  // namespace ruxcomp::core

#endif  // BACKEND_FILE_IO_H_
