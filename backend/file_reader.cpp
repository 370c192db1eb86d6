#include "backend/file_reader.h"

#include <algorithm>

#include "backend/words.h"

namespace {
constexpr std::size_t kBufferSize = std::size_t{64} << 10;
}

FileReader::FileReader(const std::string& path)
    : file_(path, std::ios::binary), opened_(file_.is_open()), buffer_(kBufferSize) {
  if (!opened_) return;
  // Pipes, folders and devices have no usable size and read as empty.
  file_.seekg(0, std::ios::end);
  const std::streamoff end = file_.tellg();
  constexpr std::streamoff kLargest = std::streamoff{1} << 40;
  if (end > 0 && end < kLargest) size_ = static_cast<std::size_t>(end);
}

void FileReader::Seek(std::size_t offset) { position_ = offset; }

std::size_t FileReader::Remaining() const { return size_ - std::min(position_, size_); }

// A file that shrank or fails to be read ends where it does so.
bool FileReader::Fill() {
  file_.clear();
  file_.seekg(static_cast<std::streamoff>(position_));
  file_.read(buffer_.data(), static_cast<std::streamsize>(std::min(kBufferSize, Remaining())));
  bufferStart_ = position_;
  bufferEnd_ = position_ + static_cast<std::size_t>(file_.gcount());
  return bufferEnd_ > position_;
}

std::size_t FileReader::Read(char* to, std::size_t size) {
  std::size_t read = 0;
  while (read < size) {
    if ((position_ < bufferStart_ || position_ >= bufferEnd_) && !Fill()) break;
    const std::size_t step = std::min(size - read, bufferEnd_ - position_);
    std::copy_n(buffer_.data() + (position_ - bufferStart_), step, to + read);
    read += step;
    position_ += step;
  }
  return read;
}

bool FileReader::Bytes(void* to, std::size_t size) {
  return size <= Remaining() && Read(static_cast<char*>(to), size) == size;
}

void FileReader::PaddedBytes(void* to, std::size_t size) {
  auto* out = static_cast<char*>(to);
  const std::size_t read = Read(out, std::min(size, Remaining()));
  std::fill(out + read, out + size, '\0');
  position_ += size - read;
}

bool FileReader::Word(std::uint32_t& word) {
  if (position_ >= bufferStart_ && position_ + sizeof word <= bufferEnd_) {
    word = LoadWord(buffer_.data() + (position_ - bufferStart_));
    position_ += sizeof word;
    return true;
  }
  unsigned char bytes[sizeof word];
  if (!Bytes(bytes, sizeof bytes)) return false;
  word = LoadWord(bytes);
  return true;
}
