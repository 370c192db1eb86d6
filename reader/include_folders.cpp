#include "reader/include_folders.h"

#include <string>
#include <vector>

namespace ruxcomp::reader {
namespace {

const std::vector<std::string>* g_folders = nullptr;

}  // namespace

IncludeFolders::IncludeFolders(const std::vector<std::string>& folders) { g_folders = &folders; }

IncludeFolders::~IncludeFolders() { g_folders = nullptr; }

const std::vector<std::string>& IncludeFolders::Current() {
  static const std::vector<std::string> none;
  return g_folders == nullptr ? none : *g_folders;
}

}  // namespace ruxcomp::reader
