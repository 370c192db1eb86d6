#include "backend/file_reader.h"

#include <algorithm>
#include <cstring>

#include "backend/words.h"

namespace {
constexpr std::size_t kBufferSize = 64 * 1024;
}

FileReader::FileReader(const std::string& path) : buffer_(kBufferSize) {
  opened_ = file_.open(path, std::ios::in | std::ios::binary) != nullptr;
  if (!opened_) return;
  // Pipes, folders and devices have no usable size and read as empty.
  const std::streamoff size = file_.pubseekoff(0, std::ios::end);
  constexpr std::streamoff kLargest = std::streamoff{1} << 40;
  if (size > 0 && size < kLargest) size_ = static_cast<std::size_t>(size);
}

void FileReader::Seek(std::size_t offset) { position_ = offset; }

std::size_t FileReader::Remaining() const { return size_ - std::min(position_, size_); }

bool FileReader::Fill() {
  if (file_.pubseekpos(static_cast<std::streamoff>(position_)) < 0) return false;
  const std::size_t wanted = std::min(kBufferSize, Remaining());
  const std::streamsize got = file_.sgetn(buffer_.data(), static_cast<std::streamsize>(wanted));
  bufferStart_ = position_;
  bufferEnd_ = position_ + static_cast<std::size_t>(std::max<std::streamsize>(got, 0));
  return bufferEnd_ > position_;
}

bool FileReader::Bytes(void* to, std::size_t size) {
  if (size > Remaining()) return false;
  for (auto* out = static_cast<char*>(to); size > 0;) {
    if ((position_ < bufferStart_ || position_ >= bufferEnd_) && !Fill()) return false;
    const std::size_t step = std::min(size, bufferEnd_ - position_);
    std::memcpy(out, buffer_.data() + (position_ - bufferStart_), step);
    out += step;
    position_ += step;
    size -= step;
  }
  return true;
}

void FileReader::PaddedBytes(void* to, std::size_t size) {
  const std::size_t there = std::min(size, Remaining());
  Bytes(to, there);
  std::memset(static_cast<char*>(to) + there, 0, size - there);
  position_ += size - there;
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
