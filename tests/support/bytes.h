// Spelling out the bytes that a file must have.
#ifndef TESTS_SUPPORT_BYTES_H_
#define TESTS_SUPPORT_BYTES_H_

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>

// Expected bytes, put together piece by piece.
class ByteString {
 public:
  ByteString& Words(std::initializer_list<std::uint32_t> words);  // little-endian
  ByteString& Text(const std::string& text);                      // as it is
  ByteString& Terminated(const std::string& text);                // with a zero byte
  ByteString& Zeros(std::size_t count);
  ByteString& ZerosUpTo(std::size_t offset);

  std::size_t size() const { return bytes_.size(); }
  const std::string& str() const { return bytes_; }

 private:
  std::string bytes_;
};

// Bytes as a hex dump, 16 a line with their offsets, so that a difference can be read.
std::string HexDump(const std::string& bytes);

// Of two files that should be equal: where they begin to differ.
testing::AssertionResult SameBytes(const std::string& actual, const std::string& expected);

#endif  // TESTS_SUPPORT_BYTES_H_
