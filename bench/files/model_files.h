// The files of generated machines, each made when it is first asked for.
#ifndef BENCH_FILES_MODEL_FILES_H_
#define BENCH_FILES_MODEL_FILES_H_

#include <cstdint>
#include <string>
#include <vector>

using Command = std::vector<std::string>;  // the program, looked for in PATH, and its arguments

// Each machine has a folder of its own, for what its files include.
struct ModelFile {
  std::uint32_t sensors;
  // As generated: "rux", "dts", "json", "names". As compiled: "meta" and "metad" by rux, "dtb" by
  // dtc, "bin" by flatc.
  std::string ending;
  std::string content = "plain";  // a name of bench/model/contents.h

  // Where it is, or will be once it is made.
  std::string Path() const;
  // The command that makes it from its generated file, which Path() must have; `options` are for
  // rux.
  Command HowToMake(const std::vector<std::string>& options) const;
  // With the options of the content.
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

// The options for rux that go with scripts of the content.
std::vector<std::string> OptionsOf(const std::string& content);

// The folder for everything that benchmarks write.
std::string ScratchFolder();

#endif  // BENCH_FILES_MODEL_FILES_H_
