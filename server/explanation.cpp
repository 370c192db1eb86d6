#include "server/explanation.h"

#include <filesystem>
#include <string>
#include <system_error>

#include "support/uri.h"

namespace rux::server {
namespace {

namespace fs = std::filesystem;

// Empty: it is not there.
std::string PageUri() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  const fs::path page = (program.parent_path() / RUX_MESSAGES_FROM_PROGRAM).lexically_normal();
  return fs::is_regular_file(page, error) ? support::UriOf(page.string()) : std::string();
}

}  // namespace

std::string ExplanationOf(const std::string& id) {
  static const std::string page = PageUri();
  return page.empty() ? std::string() : page + '#' + id;
}

}  // namespace rux::server
