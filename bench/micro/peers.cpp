#include "bench/micro/peers.h"

#include <fstream>
#include <iterator>

#include "bench/files/model_files.h"

namespace {

class LastFile {
 public:
  explicit LastFile(const char* ending) : ending_(ending) {}

  const std::string& Of(std::uint32_t sensors) {
    if (sensors != sensors_) {
      std::ifstream file(ModelFile{sensors, ending_}.Made(), std::ios::binary);
      bytes_.assign(std::istreambuf_iterator<char>(file), {});
      sensors_ = sensors;
    }
    return bytes_;
  }

 private:
  const char* ending_;
  std::uint32_t sensors_ = 0;
  std::string bytes_;
};

}  // namespace

const std::string& TreeBytes(std::uint32_t sensors) {
  static LastFile file("dtb");
  return file.Of(sensors);
}

const std::string& FlatBytes(std::uint32_t sensors) {
  static LastFile file("bin");
  return file.Of(sensors);
}
