#include <fmt/chrono.h>
#include <fmt/format.h>

#include <cstdint>
#include <ctime>
#include <string>

#include "inspect/dump.h"
#include "inspect/value_json.h"
#include "ruxcomp/file/header.h"
#include "support/json.h"
#include "support/safe_text.h"

namespace rux::inspect {

std::string TitleText(const std::string& path, compiled::Form form, std::uint32_t version,
                      std::uint32_t creation_time) {
  return fmt::format("{}: {}, {}", support::SafePath(path), compiled::FormName(form),
                     FormatText(version, creation_time));
}

std::string FormatText(std::uint32_t version, std::uint32_t creation_time) {
  return fmt::format("format 0x{:08X}, created {:%Y-%m-%d %H:%M:%S} UTC", version,
                     fmt::gmtime(static_cast<std::time_t>(creation_time)));
}

void WriteTitle(support::JsonObject& json, const std::string& path, compiled::Form form,
                std::uint32_t version, std::uint32_t creation_time) {
  constexpr std::size_t kSchema = 1;  // raised when a member changes its meaning or goes away
  json.Member("schema", kSchema);
  WriteForm(json, form);
  WriteText(json, "file", path);
  json.Member("version", version);
  json.Member("created", creation_time);
}

void WriteForm(support::JsonObject& json, compiled::Form form) {
  if (form == compiled::Form::kNone) return json.Member("form", nullptr);
  json.Member("form", form == compiled::Form::kMeta ? "meta" : "debug meta");
}

}  // namespace rux::inspect
