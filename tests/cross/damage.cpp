#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "ruxcomp/query.h"
#include "ruxcomp/verify.h"
#include "tests/cross/transcript.h"

namespace {

// At most as many places are damaged, spread over the file: an emulated machine is slow.
constexpr std::size_t kMostPlaces = 400;

class Outcomes {
 public:
  explicit Outcomes(const std::string& path) : path_(path) {}

  void Add(const std::string& bytes) {
    std::ofstream(path_, std::ios::binary) << bytes;
    const bool is_loaded = gcInit(path_) != 0;
    gcUnInit();
    const std::optional<ruxcomp::Fault> fault = ruxcomp::Verify(bytes);
    loaded_ += is_loaded ? 1 : 0;
    sound_ += fault ? 0 : 1;
    Digest(fault ? ruxcomp::FaultText(*fault) : "sound");
    Digest(is_loaded ? "loaded" : "refused");
  }

  void Print(const char* damage) const {
    std::printf("%s: loaded %u, sound %u, digest %08X\n", damage, loaded_, sound_, digest_);
  }

 private:
  void Digest(const std::string& text) {
    for (const char c : text) digest_ = (digest_ ^ static_cast<unsigned char>(c)) * 16777619;
  }

  const std::string path_;
  unsigned int loaded_ = 0;
  unsigned int sound_ = 0;
  std::uint32_t digest_ = 2166136261;
};

}  // namespace

void PrintDamage(const std::string& meta) {
  std::ifstream file(meta, std::ios::binary);
  const std::string sound{std::istreambuf_iterator<char>(file), {}};
  const std::string damaged = meta + ".damaged";
  const std::size_t step = std::max<std::size_t>(sound.size() / kMostPlaces & ~std::size_t{3}, 4);

  Outcomes words(damaged), zeros(damaged);
  for (std::size_t at = 0; at + 4 <= sound.size(); at += step) {
    for (const char byte : {'\0', '\1', '\x7F', '\xFF'}) {
      words.Add(std::string(sound).replace(at, 4, 4, byte));
    }
    zeros.Add(std::string(sound).replace(at, std::string::npos, sound.size() - at, '\0'));
  }
  words.Print("words");
  zeros.Print("ends of zeros");
  std::remove(damaged.c_str());
}
