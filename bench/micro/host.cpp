#include "bench/micro/host.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "bench/files/model_files.h"
#include "ruxcomp/ruxcomp.h"
#include "ruxmeta.h"

// Nothing is wrong with generated machines. What the library reports while it is loaded, that the
// reader plug-in is not installed, does not matter: the reader is part of the program.
extern "C" __attribute__((visibility("default"))) void Output(unsigned int /*size*/,
                                                              const char* /*format*/, ...) {}

void LoadMachine(std::uint32_t sensors) {
  static std::uint32_t loaded = 0;
  if (loaded == sensors) return;
  gcUnInit();
  Require(gcInit(ModelFile{sensors, "meta"}.Made()), "gcInit");
  loaded = sensors;
}

const ruxcomp::Model& ModelOf(std::uint32_t sensors) {
  static std::uint32_t of = 0;
  static ruxcomp::Model model;
  if (of != sensors) {
    std::optional<ruxcomp::Model> opened = ruxcomp::Model::Open(ModelFile{sensors, "meta"}.Made());
    Require(opened.has_value(), "Model::Open");
    model = std::move(*opened);
    of = sensors;
  }
  return model;
}

const ruxmeta_model* CModelOf(std::uint32_t sensors) {
  static std::uint32_t of = 0;
  static ruxmeta_model* model = nullptr;
  if (of != sensors) {
    ruxmeta_close(model);
    const std::string path = ModelFile{sensors, "meta"}.Made();
    Require(ruxmeta_open(path.c_str(), &model, nullptr) == RUXMETA_OK, "ruxmeta_open");
    of = sensors;
  }
  return model;
}

std::string ScriptPath(const std::string& path) {
  std::string script = path;
  std::replace(script.begin(), script.end(), '/', '\\');
  return script;
}

void Require(bool done, const char* what) {
  if (done) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}
