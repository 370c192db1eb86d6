#include "bench/files/model_files.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/files/process.h"
#include "bench/model/contents.h"

namespace fs = std::filesystem;

namespace {

using Options = std::vector<std::string>;

Command Compile(const Options& options, const Command& files) {
  Command command = {RUX_PROGRAM, "compile"};
  command.insert(command.end(), options.begin(), options.end());
  command.insert(command.end(), files.begin(), files.end());
  return command;
}

// How the files that are not generated are made of those that are.
struct Recipe {
  const char* ending;
  const char* of;
  Command (*command)(const std::string& from, const std::string& to, const Options& options);
};
const Recipe kRecipes[] = {
    {"meta", "rux",
     [](const std::string& from, const std::string& to, const Options& options) {
       return Compile(options, {from, "-o", to});
     }},
    {"metad", "rux",
     [](const std::string& from, const std::string& to, const Options& options) {
       return Compile(options, {from, "-o", to + ".meta", "-g", to});
     }},
    {"dtb", "dts",
     [](const std::string& from, const std::string& to, const Options&) -> Command {
       return {"dtc", "-q", "-o", to, from};
     }},
    {"bin", "json",
     [](const std::string& from, const std::string& to, const Options&) -> Command {
       return {"flatc", "-b", "-o", fs::path(to).parent_path().string(), RUX_SCHEMA, from};
     }},
};

const Recipe* Find(const std::string& ending) {
  const auto found = std::find_if(kRecipes, std::end(kRecipes),
                                  [&](const Recipe& recipe) { return recipe.ending == ending; });
  return found == std::end(kRecipes) ? nullptr : found;
}

}  // namespace

std::string ScratchFolder() {
  fs::create_directories(RUX_SCRATCH);
  return RUX_SCRATCH;
}

std::string ModelFile::Path() const {
  const std::string folder = ScratchFolder() + '/' + content + std::to_string(sensors);
  fs::create_directories(folder);
  return folder + "/machine." + ending;
}

Command ModelFile::HowToMake(const std::vector<std::string>& options) const {
  if (const Recipe* recipe = Find(ending)) {
    return recipe->command(ModelFile{sensors, recipe->of, content}.Path(), Path(), options);
  }
  return {RUX_GENERATOR, content, ending, std::to_string(sensors), Path()};
}

Command ModelFile::HowToMake() const { return HowToMake(OptionsOf(content)); }

std::string ModelFile::Made() const {
  const bool current =
      fs::exists(Path()) && fs::last_write_time(Path()) > fs::last_write_time(RUX_GENERATOR);
  if (current) return Path();
  if (const Recipe* recipe = Find(ending)) ModelFile{sensors, recipe->of, content}.Made();
  Run(HowToMake());
  return Path();
}

std::vector<std::string> OptionsOf(const std::string& content) {
  const auto& options = ContentNamed(content).options;
  return {options.begin(), options.end()};
}

std::vector<KnownSensor> SensorsOf(std::uint32_t sensors) {
  std::ifstream lines(ModelFile{sensors, "names"}.Made());
  std::vector<KnownSensor> known;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    KnownSensor sensor;
    fields >> sensor.id >> std::ws;
    std::getline(fields, sensor.name, '\t');
    std::getline(fields, sensor.path);
    known.push_back(sensor);
  }
  if (known.size() != sensors) throw std::runtime_error("the list of names is not complete");
  return known;
}
