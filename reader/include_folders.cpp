#include "reader/include_folders.h"

#include <string>
#include <utility>
#include <vector>

namespace ruxcomp::reader {
namespace {

const IncludeFolders* g_current = nullptr;

}  // namespace

IncludeFolders::IncludeFolders(const std::vector<std::string>& folders, Naming naming)
    : folders_(folders), naming_(std::move(naming)) {
  g_current = this;
}

IncludeFolders::~IncludeFolders() { g_current = nullptr; }

const std::vector<std::string>& IncludeFolders::Current() {
  static const std::vector<std::string> none;
  return g_current == nullptr ? none : g_current->folders_;
}

std::string IncludeFolders::NameOf(const std::string& path) {
  return g_current == nullptr || !g_current->naming_ ? path : g_current->naming_(path);
}

}  // namespace ruxcomp::reader
