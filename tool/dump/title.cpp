#include <fmt/chrono.h>
#include <fmt/format.h>

#include <ctime>

#include "tool/dump/dump.h"
#include "tool/text/safe_text.h"

namespace rux {

std::string TitleText(const std::string& path, const char* form, std::uint32_t version,
                      std::uint32_t creation_time) {
  return fmt::format("{}: {}, format 0x{:08X}, created {:%Y-%m-%d %H:%M:%S} UTC", SafeText(path),
                     form, version, fmt::gmtime(static_cast<std::time_t>(creation_time)));
}

Json TitleJson(const std::string& path, const char* form, std::uint32_t version,
               std::uint32_t creation_time) {
  constexpr int kSchema = 1;  // raised whenever a member changes its meaning or goes away
  Json json = {{"schema", kSchema}, {"form", form}};
  PutText(json, "file", path);
  json["version"] = version;
  json["created"] = creation_time;
  return json;
}

}  // namespace rux
