#include "tests/damage/expected_load.h"

#include <algorithm>
#include <cstdint>
#include <set>

#include "tests/api/debug_walk.h"
#include "tests/support/bytes.h"

namespace {

using namespace std::string_literals;

const std::string kVersion = ByteString().Words({0x01000000}).str();

// Whether a meta file can be read to its end.
class MetaWalk {
 public:
  static bool Loads(const std::string& file) try {
    MetaWalk walk(file);
    return walk.HasHeader() && walk.HasSections() && walk.HasBlocks();
  } catch (const PastEnd&) {
    return false;
  }

 private:
  struct PastEnd {};

  explicit MetaWalk(const std::string& file) : file_(file) {}

  void Skip(std::size_t size) {
    if (at_ > file_.size() || file_.size() - at_ < size) throw PastEnd();
    at_ += size;
  }
  std::uint32_t Word() {
    Skip(4);
    std::uint32_t word = 0;
    for (std::size_t i = at_; i-- > at_ - 4;) {
      word = word << 8 | static_cast<unsigned char>(file_[i]);
    }
    return word;
  }

  // The byte after the magic's zero does not count.
  bool HasHeader() const {
    return file_.size() >= 20 && file_.substr(0, 15) == "MORV RUX meta.\0"s &&
           file_.substr(16, 4) == kVersion;
  }

  bool HasSections() {
    at_ = 256;
    for (std::uint32_t sections = Word(); sections > 0; --sections) {
      Word();
      for (std::uint32_t entries = Word(); entries > 0; --entries) {
        Word();
        Skip(std::size_t{4} * Word());
      }
    }
    return true;
  }

  // The directory must end before the sections.
  bool HasBlocks() {
    for (std::size_t slot = 128; slot < 256; slot += 4) {
      at_ = slot;
      const std::uint32_t offset = Word();
      if (offset == 0) return true;
      at_ = offset;
      if (IsClass(Word())) Skip(Word());
    }
    return false;
  }

  static bool IsClass(std::uint32_t base) {
    static const std::set<std::uint32_t> bases = {0x03000000, 0x04000000, 0x05000000, 0x06000000,
                                                  0x11000000, 0x12000000, 0x18000000, 0x1A000000,
                                                  0x1B000000, 0x1C000000};
    return bases.count(base) != 0;
  }

  const std::string& file_;
  std::size_t at_ = 0;
};

bool HasDebugHeader(const std::string& file) {
  return file.substr(0, 20) == "MORV RUX metaD.\0"s + kVersion;
}

}  // namespace

Load ExpectedLoad(Form form, const std::string& file) {
  if (form == Form::kMeta) return MetaWalk::Loads(file) ? Load::kAccepted : Load::kRefused;
  if (!HasDebugHeader(file)) return Load::kRefused;
  return DebugWalk::Outcome(file) == "1" ? Load::kAccepted : Load::kRaised;
}
