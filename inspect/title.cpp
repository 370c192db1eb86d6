#include <fmt/chrono.h>
#include <fmt/format.h>

#include <ctime>

#include "inspect/dump.h"
#include "inspect/value_json.h"
#include "support/safe_text.h"

namespace rux::inspect {

std::string TitleText(const std::string& path, compiled::Form form, std::uint32_t version,
                      std::uint32_t creation_time) {
  return fmt::format("{}: {}, {}", support::SafeText(path), compiled::FormName(form),
                     OriginText(version, creation_time));
}

std::string OriginText(std::uint32_t version, std::uint32_t creation_time) {
  return fmt::format("format 0x{:08X}, created {:%Y-%m-%d %H:%M:%S} UTC", version,
                     fmt::gmtime(static_cast<std::time_t>(creation_time)));
}

void WriteTitle(support::JsonWriter& json, const std::string& path, compiled::Form form,
                std::uint32_t version, std::uint32_t creation_time) {
  constexpr std::size_t kSchema = 1;  // raised when a member changes its meaning or goes away
  json.Key("schema").Number(kSchema);
  WriteForm(json, form);
  WriteText(json, "file", path);
  json.Key("version").Number(version).Key("created").Number(creation_time);
}

void WriteForm(support::JsonWriter& json, compiled::Form form) {
  json.Key("form");
  switch (form) {
    case compiled::Form::kNone:
      json.Null();
      break;
    case compiled::Form::kMeta:
      json.String("meta");
      break;
    case compiled::Form::kDebugMeta:
      json.String("debug meta");
      break;
  }
}

}  // namespace rux::inspect
