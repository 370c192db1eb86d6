#include "tool/meta/meta_format.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>

#include "fmt/format.h"
#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"

namespace rux {
namespace {

constexpr char kMagic[] = "MORV RUX meta.";
constexpr std::streamoff kVersionOffset = 16;
constexpr std::streamoff kSectionsOffset = 256;
// Of the directory: where the last block, the table cells, begins. It is written last but one.
constexpr std::streamoff kLastSlotOffset = 164;
constexpr std::uint64_t kBlockHeaderSize = 8;  // class and length

// Words of a file, least significant byte first; 0 behind its end.
class WordReader {
 public:
  explicit WordReader(const std::string& path) : stream_(path, std::ios::binary) {}

  std::uint32_t At(std::streamoff offset) {
    unsigned char bytes[4] = {};
    stream_.clear();
    stream_.seekg(offset);
    stream_.read(reinterpret_cast<char*>(bytes), sizeof bytes);
    if (stream_.gcount() != sizeof bytes) return 0;
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | std::uint32_t{bytes[3]} << 24;
  }

  std::uint64_t Size() {
    stream_.clear();
    stream_.seekg(0, std::ios::end);
    return static_cast<std::uint64_t>(stream_.tellg());
  }

  bool BeginsWithMagic() {
    char bytes[sizeof kMagic] = {};
    stream_.clear();
    stream_.seekg(0);
    stream_.read(bytes, sizeof bytes);
    return stream_.gcount() == sizeof bytes && std::memcmp(bytes, kMagic, sizeof kMagic) == 0;
  }

 private:
  std::ifstream stream_;
};

}  // namespace

bool IsWholeMetaFile(const std::string& path) {
  WordReader words(path);
  const std::uint32_t last_block = words.At(kLastSlotOffset);
  if (last_block <= kSectionsOffset || words.At(last_block) != RUX_CLASS_TableData) return false;
  return last_block + kBlockHeaderSize + words.At(last_block + 4) == words.Size();
}

std::string WhyNotLoaded(const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return std::strerror(errno);
  if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
  if (!std::ifstream(path)) return std::strerror(errno);
  WordReader words(path);
  if (!words.BeginsWithMagic()) return "it is no meta file";
  const std::uint32_t version = words.At(kVersionOffset);
  if (version != RUX_VERSION) {
    return fmt::format("it has the format version 0x{:08X}, readable is 0x{:08X}", version,
                       RUX_VERSION);
  }
  return "it is damaged";
}

}  // namespace rux
