// Reading a compiled file word by word, never past its end.
#ifndef BACKEND_FILE_READER_H_
#define BACKEND_FILE_READER_H_

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

class FileReader {
 public:
  // Opens the file; opened() tells whether that went well.
  explicit FileReader(const std::string& path);

  bool opened() const { return opened_; }

  // Goes to an offset from the start of the file, inside it or not.
  void Seek(std::size_t offset);

  // How many bytes the file has, and how many from here on. Hold lengths and counts against them
  // before making room for what they announce.
  std::size_t size() const { return size_; }
  std::size_t Remaining() const;

  // Each reads all that is asked for, or answers false when the file does not have it.
  bool Word(std::uint32_t& word);
  bool Bytes(void* to, std::size_t size);

  // Reads as if zeros followed the end of the file, without end.
  void PaddedBytes(void* to, std::size_t size);

 private:
  bool Fill();
  std::size_t Read(char* to, std::size_t size);  // how much of it could be read

  std::ifstream file_;
  bool opened_ = false;
  std::size_t size_ = 0;
  std::vector<char> buffer_;
  std::size_t bufferStart_ = 0;  // offset of the buffer in the file
  std::size_t bufferEnd_ = 0;    // offset behind what the buffer holds
  std::size_t position_ = 0;
};

#endif  // BACKEND_FILE_READER_H_
