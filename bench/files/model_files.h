// The files of generated machines, each made when it is first asked for.
#ifndef BENCH_FILES_MODEL_FILES_H_
#define BENCH_FILES_MODEL_FILES_H_

#include <cstdint>
#include <string>
#include <vector>

using Command = std::vector<std::string>;  // the program, looked for in PATH, and its arguments

enum class Richness { kPlain, kRich };

struct ModelFile {
  std::uint32_t sensors;
  // As generated: "rux", "dts", "json", "names". As compiled: "meta" and "metad" by rux, "dtb" by
  // dtc, "bin" by flatc.
  std::string ending;
  Richness richness = Richness::kPlain;

  // Where it is, or will be once it is made.
  std::string Path() const;
  // How it is made of the generated file that Path() needs to be there.
  Command HowToMake() const;
  // Its path, with the file there. Throws std::runtime_error when it cannot be made.
  std::string Made() const;
};

// What can be asked for in a machine.
struct KnownSensor {
  std::uint32_t id;
  std::string name;
  std::string path;  // in the device tree
};
std::vector<KnownSensor> SensorsOf(std::uint32_t sensors);

// The folder for everything that benchmarks write.
std::string ScratchFolder();

#endif  // BENCH_FILES_MODEL_FILES_H_
