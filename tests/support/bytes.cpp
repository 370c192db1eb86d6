#include "tests/support/bytes.h"

#include <algorithm>
#include <cstdio>

ByteString& ByteString::Words(std::initializer_list<std::uint32_t> words) {
  for (const std::uint32_t word : words) {
    for (int shift = 0; shift < 32; shift += 8) bytes_ += static_cast<char>(word >> shift);
  }
  return *this;
}

ByteString& ByteString::Text(const std::string& text) {
  bytes_ += text;
  return *this;
}

ByteString& ByteString::Terminated(const std::string& text) {
  bytes_ += text;
  return Zeros(1);
}

ByteString& ByteString::Zeros(std::size_t count) {
  bytes_.append(count, '\0');
  return *this;
}

ByteString& ByteString::ZerosUpTo(std::size_t offset) {
  return Zeros(offset > bytes_.size() ? offset - bytes_.size() : 0);
}

std::string HexDump(const std::string& bytes) {
  std::string dump;
  char piece[32];
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i % 16 == 0) {
      std::snprintf(piece, sizeof piece, "%s%06zx:", i ? "\n" : "", i);
      dump += piece;
    }
    std::snprintf(piece, sizeof piece, " %02x", static_cast<unsigned char>(bytes[i]));
    dump += piece;
  }
  return dump;
}

testing::AssertionResult SameBytes(const std::string& actual, const std::string& expected) {
  if (actual == expected) return testing::AssertionSuccess();
  const auto differ =
      std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end()).first;
  const auto at = static_cast<std::size_t>(differ - actual.begin());
  const auto around = [at](const std::string& bytes) {
    return HexDump(bytes.substr(std::min(at, bytes.size()), 64));
  };
  return testing::AssertionFailure()
         << "from offset " << at << " on\n"
         << around(actual) << "\nof " << actual.size() << " bytes, expected\n"
         << around(expected) << "\nof " << expected.size();
}
