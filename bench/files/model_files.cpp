#include "bench/files/model_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "bench/files/process.h"

namespace fs = std::filesystem;

namespace {

// How the files that are not generated are made of those that are.
struct Recipe {
  const char* ending;
  const char* of;
  Command (*command)(const std::string& from, const std::string& to);
};
const Recipe kRecipes[] = {
    {"meta", "rux",
     [](const std::string& from, const std::string& to) -> Command {
       return {RUX_PROGRAM, "compile", from, "-o", to};
     }},
    {"metad", "rux",
     [](const std::string& from, const std::string& to) -> Command {
       return {RUX_PROGRAM, "compile", from, "-o", to + ".meta", "-g", to};
     }},
    {"dtb", "dts",
     [](const std::string& from, const std::string& to) -> Command {
       return {"dtc", "-q", "-o", to, from};
     }},
    {"bin", "json",
     [](const std::string& from, const std::string& to) -> Command {
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
  return ScratchFolder() + (richness == Richness::kRich ? "/rich" : "/machine") +
         std::to_string(sensors) + '.' + ending;
}

Command ModelFile::HowToMake() const {
  if (const Recipe* recipe = Find(ending)) {
    return recipe->command(ModelFile{sensors, recipe->of, richness}.Path(), Path());
  }
  Command generate = {RUX_GENERATOR, ending, std::to_string(sensors), Path()};
  if (richness == Richness::kRich) generate.insert(generate.begin() + 1, "--rich");
  return generate;
}

std::string ModelFile::Made() const {
  const bool current =
      fs::exists(Path()) && fs::last_write_time(Path()) > fs::last_write_time(RUX_GENERATOR);
  if (current) return Path();
  if (const Recipe* recipe = Find(ending)) ModelFile{sensors, recipe->of, richness}.Made();
  Run(HowToMake());
  return Path();
}

std::vector<KnownSensor> SensorsOf(std::uint32_t sensors) {
  std::ifstream lines(ModelFile{sensors, "names"}.Made());
  std::vector<KnownSensor> known;
  for (KnownSensor sensor; lines >> sensor.id >> sensor.name >> sensor.path;) {
    known.push_back(sensor);
  }
  if (known.size() != sensors) throw std::runtime_error("the list of names is not complete");
  return known;
}
