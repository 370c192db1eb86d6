// rux ls META [KIND]
//
// With --json, without KIND:
//   {"file": text, "version": number, "created": number,
//    "kinds": [{"kind": text, "sections": number}, ...]}
// and with KIND:
//   {"kind": text, "sections": [{"ordinal": number, "name": text, "id": number}, ...]}
// where "id" is missing in kinds without IDs, and sections of kinds without names have
// "entries": [{"name": text}, ...] instead of the name. See inspect/entry_value.h for "hex".
#include <fmt/format.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "inspect/dump.h"
#include "inspect/entry_value.h"
#include "inspect/meta_view.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

using support::JsonObject;

struct Options {
  std::string meta;
  std::string kind;
  bool json = false;
};

std::string KindsText(const inspect::MetaView& meta) {
  std::string text = fmt::format(
      "{}: {}\n", support::SafePath(meta.path()),
      inspect::FormatText(meta.model().info().version, meta.model().info().creationTime));
  for (const ruxcomp::language::SectionKind& kind : ruxcomp::language::kSectionKinds) {
    if (!kind.IsCompiled()) continue;
    const std::size_t count = meta.SectionsOf(kind).size();
    if (count > 0) text += fmt::format("{:<10}{}\n", kind.keyword, count);
  }
  return text;
}

std::string KindsJson(const inspect::MetaView& meta) {
  std::vector<std::pair<std::string, std::size_t>> kinds;
  for (const ruxcomp::language::SectionKind& kind : ruxcomp::language::kSectionKinds) {
    if (!kind.IsCompiled()) continue;
    const std::size_t count = meta.SectionsOf(kind).size();
    if (count > 0) kinds.emplace_back(kind.keyword, count);
  }
  return support::JsonDocument([&](JsonObject& json) {
    inspect::WriteText(json, "file", meta.path());
    json.Member("version", meta.model().info().version);
    json.Member("created", meta.model().info().creationTime);
    json.Objects("kinds", kinds, [](JsonObject& object, const auto& kind) {
      object.Member("kind", kind.first);
      object.Member("sections", kind.second);
    });
  });
}

std::vector<std::string> KeysOf(const ruxcomp::Section& section) {
  std::vector<std::string> keys;
  for (const ruxcomp::Entry entry : section.entries())
    keys.push_back(inspect::KeyOf(section, entry));
  return keys;
}

// What distinguishes a section from the others of its kind.
std::string SectionText(const ruxcomp::language::SectionKind& kind,
                        const ruxcomp::Section& section) {
  std::string text = fmt::format("@{}", section.ordinal());
  if (!kind.HasNames()) {
    const char* separator = "  ";
    for (const std::string& key : KeysOf(section)) {
      text += std::exchange(separator, ", ") + support::NameText(key);
    }
    return text;
  }
  if (const auto id = section.id()) text += fmt::format("  #0x{:X}", *id);
  if (section.has_name()) text += "  " + support::NameText(section.name());
  return text;
}

void WriteSection(JsonObject& json, const ruxcomp::language::SectionKind& kind,
                  const ruxcomp::Section& section) {
  json.Member("ordinal", section.ordinal());
  if (!kind.HasNames()) {
    json.Objects("entries", KeysOf(section), [](JsonObject& entry, const std::string& key) {
      inspect::WriteText(entry, "name", key);
    });
    return;
  }
  if (section.has_name()) inspect::WriteText(json, "name", section.name());
  if (const auto id = section.id()) json.Member("id", *id);
}

std::string KindJson(const inspect::MetaView& meta, const ruxcomp::language::SectionKind& kind) {
  return support::JsonDocument([&](JsonObject& json) {
    json.Member("kind", kind.keyword);
    json.Objects("sections", meta.SectionsOf(kind),
                 [&](JsonObject& object, const ruxcomp::Section& section) {
                   WriteSection(object, kind, section);
                 });
  });
}

std::string KindText(const inspect::MetaView& meta, const ruxcomp::language::SectionKind& kind) {
  std::string text;
  for (const ruxcomp::Section section : meta.SectionsOf(kind)) {
    text += SectionText(kind, section) + '\n';
  }
  return text;
}

support::ExitStatus Ls(const Options& options) {
  const inspect::MetaView meta(options.meta);
  if (options.kind.empty()) {
    support::PrintOut(options.json ? KindsJson(meta) : KindsText(meta));
  } else {
    const ruxcomp::language::SectionKind& kind = inspect::ExpectKind(options.kind);
    support::PrintOut(options.json ? KindJson(meta, kind) : KindText(meta, kind));
  }
  return support::ExitStatus::kDone;
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

}  // namespace rux::tool
