// rux ls META [KIND]
//
// With --json, without KIND:
//   {"file": text, "version": number, "created": number,
//    "kinds": [{"kind": text, "sections": number}, ...]}
// and with KIND:
//   {"kind": text, "sections": [{"ordinal": number, "name": text, "id": number}, ...]}
// where "id" is missing in kinds without IDs, and sections of kinds without names have
// "entries": [{"name": text}, ...] instead of the name. See value_json.h for "hex".
#include <fmt/chrono.h>
#include <fmt/format.h>

#include <ctime>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tool/command.h"
#include "tool/meta/kinds.h"
#include "tool/meta/meta_find.h"
#include "tool/meta/meta_view.h"
#include "tool/meta/value_json.h"
#include "tool/standard_streams.h"
#include "tool/text/name_text.h"
#include "tool/text/safe_text.h"

namespace rux {
namespace {

struct Options {
  std::string meta;
  std::string kind;
  bool json = false;
};

std::string KindsText(const MetaView& meta) {
  const auto created = static_cast<std::time_t>(meta.info().creationTime);
  std::string text = fmt::format("{}: format 0x{:08X}, created {:%Y-%m-%d %H:%M:%S} UTC\n",
                                 SafeText(meta.path()), meta.info().version, fmt::gmtime(created));
  for (const Kind& kind : Kinds()) {
    const std::size_t count = meta.SectionsOf(kind).size();
    if (count > 0) text += fmt::format("{:<10}{}\n", kind.keyword, count);
  }
  return text;
}

Json KindsJson(const MetaView& meta) {
  Json json;
  PutText(json, "file", meta.path());
  json["version"] = meta.info().version;
  json["created"] = meta.info().creationTime;
  json["kinds"] = Json::array();
  for (const Kind& kind : Kinds()) {
    const std::size_t count = meta.SectionsOf(kind).size();
    if (count > 0) json["kinds"].push_back({{"kind", kind.keyword}, {"sections", count}});
  }
  return json;
}

std::vector<std::string> KeysOf(const ruxcomp::Section& section) {
  std::vector<std::string> keys;
  for (const ruxcomp::Entry entry : section.entries()) keys.push_back(KeyOf(section, entry));
  return keys;
}

// What tells a section from the others of its kind.
std::string SectionText(const Kind& kind, const ruxcomp::Section& section) {
  std::string text = fmt::format("@{}", section.ordinal());
  if (!kind.has_names) {
    const char* separator = "  ";
    for (const std::string& key : KeysOf(section)) {
      text += std::exchange(separator, ", ") + NameText(key);
    }
    return text;
  }
  if (const auto id = section.id()) text += fmt::format("  #0x{:X}", *id);
  if (section.has_name()) text += "  " + NameText(section.name());
  return text;
}

Json SectionJson(const Kind& kind, const ruxcomp::Section& section) {
  Json json = {{"ordinal", section.ordinal()}};
  if (!kind.has_names) {
    json["entries"] = Json::array();
    for (const std::string& key : KeysOf(section)) {
      PutText(json["entries"].emplace_back(Json::object()), "name", key);
    }
    return json;
  }
  if (section.has_name()) PutText(json, "name", std::string(section.name()));
  if (const auto id = section.id()) json["id"] = *id;
  return json;
}

std::string ListKind(const MetaView& meta, const Kind& kind, bool as_json) {
  if (as_json) {
    Json json = {{"kind", kind.keyword}, {"sections", Json::array()}};
    for (const ruxcomp::Section section : meta.SectionsOf(kind)) {
      json["sections"].push_back(SectionJson(kind, section));
    }
    return JsonText(json);
  }
  std::string text;
  for (const ruxcomp::Section section : meta.SectionsOf(kind)) {
    text += SectionText(kind, section) + '\n';
  }
  return text;
}

ExitStatus Ls(const Options& options) {
  const MetaView meta(options.meta);
  if (options.kind.empty()) {
    PrintOut(options.json ? JsonText(KindsJson(meta)) : KindsText(meta));
  } else {
    PrintOut(ListKind(meta, ExpectKind(options.kind), options.json));
  }
  return ExitStatus::kDone;
}

}  // namespace

Action SetUpLs(Arguments& arguments) {
  const auto options = std::make_shared<Options>();
  arguments.Add("META", &options->meta, "The meta file to read").File().Required();
  arguments.Add("KIND", &options->kind, "List the sections of this kind, such as SENSOR");
  arguments.Add("--json", &options->json, "Print JSON");
  arguments.Footer(
      "With --json: {file, version, created, kinds: [{kind, sections}]}, or with KIND\n"
      "{kind, sections: [{ordinal, name, id}]} ({ordinal, entries: [{name}]} in kinds without\n"
      "names). A text that is no UTF-8 comes with its bytes as \"hex\".\n\n"
      "Example:\n  rux ls server.meta SENSOR");
  return [options] { return Ls(*options); };
}

}  // namespace rux
