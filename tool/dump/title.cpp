#include <fmt/chrono.h>
#include <fmt/format.h>

#include <ctime>

#include "tool/dump/dump.h"
#include "tool/text/safe_text.h"

namespace rux {

std::string TitleText(const std::string& path, Form form, std::uint32_t version,
                      std::uint32_t creation_time) {
  return fmt::format("{}: {}, format 0x{:08X}, created {:%Y-%m-%d %H:%M:%S} UTC", SafeText(path),
                     FormName(form), version, fmt::gmtime(static_cast<std::time_t>(creation_time)));
}

Json TitleJson(const std::string& path, Form form, std::uint32_t version,
               std::uint32_t creation_time) {
  constexpr int kSchema = 1;  // raised whenever a member changes its meaning or goes away
  Json json = {{"schema", kSchema}, {"form", FormJson(form)}};
  PutText(json, "file", path);
  json["version"] = version;
  json["created"] = creation_time;
  return json;
}

Json FormJson(Form form) {
  switch (form) {
    case Form::kNone:
      break;
    case Form::kMeta:
      return "meta";
    case Form::kDebugMeta:
      return "debug meta";
  }
  return nullptr;
}

}  // namespace rux
