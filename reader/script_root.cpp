#include "reader/script_root.h"

#include <string>
#include <utility>

namespace ruxcomp::reader {
namespace {

const ScriptRoot* g_root = nullptr;

}  // namespace

ScriptRoot::ScriptRoot(std::string given, std::string actual)
    : given_(std::move(given)), actual_(std::move(actual)) {
  g_root = this;
}

ScriptRoot::~ScriptRoot() { g_root = nullptr; }

std::string ScriptRoot::ActualPath(const std::string& path) {
  if (g_root == nullptr) return path;
  const std::string& given = g_root->given_;
  return path.compare(0, given.size(), given) == 0 ? g_root->actual_ + path.substr(given.size())
                                                   : path;
}

}  // namespace ruxcomp::reader
