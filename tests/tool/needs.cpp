#include "tests/tool/needs.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

bool Succeeds(const std::string& command) {
  return std::system((command + " > /dev/null 2>&1 < /dev/null").c_str()) == 0;
}

std::string WhyNoTerminal() {
  if (!Succeeds("command -v script")) return "the program script is not installed";
  if (!Succeeds("script -qec true /dev/null")) return "the system has no pseudo-terminals";
  return "";
}

std::string WhyNoPermissions(const std::string& program) {
  const TempFolder folder;
  const std::string file = folder.Write("file", "");
  std::filesystem::permissions(file, std::filesystem::perms::none);
  const std::string limited = LimitedCommand();
  if (!Succeeds(limited + " " + program + " --version")) {
    return "root without its capabilities cannot run the program under test";
  }
  if (Succeeds(limited + " cat " + file)) return "permissions of files do not hold here";
  return "";
}

}  // namespace

std::string LimitedCommand() {
  return geteuid() == 0 ? "setpriv --bounding-set=-all --inh-caps=-all" : "";
}

std::string WhatIsMissing(const std::string& needs, const std::string& program) {
  std::istringstream lines(needs);
  for (std::string need; std::getline(lines, need);) {
    std::string reason;
    if (need == "terminal") {
      reason = WhyNoTerminal();
    } else if (need == "dtc") {
      reason = Succeeds("command -v dtc") ? "" : "the program dtc is not installed";
    } else if (need == "permissions") {
      reason = WhyNoPermissions(program);
    } else {
      throw std::runtime_error("no system can be asked for " + need);
    }
    if (!reason.empty()) return reason;
  }
  return "";
}
