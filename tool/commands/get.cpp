// rux get META PATH
//
// With --json, for a section:
//   {"kind": text, "ordinal": number, "entries": [entry, ...], "cells": [256 numbers, in a TABLE]}
// for an entry:
//   {"kind": text, "ordinal": number, "entry": entry}
// and for a part:
//   {"kind": text, "ordinal": number, "part": part}
// See inspect/entry_value.h for entries, parts and values.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "inspect/entry_value.h"
#include "inspect/meta_view.h"
#include "inspect/path.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/records.h"
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
  std::string path;
  bool json = false;
};

// Null when the section has none.
const ruxcomp::TableCells* CellsOf(const inspect::MetaView& meta, const ruxcomp::Section& section) {
  return section.kind() == RUX_SECT_TABLE ? meta.model().table(section.ordinal()) : nullptr;
}

std::string SectionText(const inspect::MetaView& meta, const ruxcomp::Section& section) {
  std::vector<std::pair<std::string, std::string>> lines;
  std::size_t width = 0;
  for (const ruxcomp::Entry entry : section.entries()) {
    lines.emplace_back(support::SafeText(inspect::KeyOf(section, entry)),
                       inspect::ValueText(inspect::ValueOf(entry)));
    width = std::max(width, support::Columns(lines.back().first));
  }
  std::string text;
  for (const auto& [key, value] : lines) {
    text += key;
    text.append(width - support::Columns(key) + 2, ' ');
    text += value;
    text += '\n';
  }
  if (const auto* cells = CellsOf(meta, section)) text += inspect::CellsText(*cells);
  return text;
}

void WriteSection(JsonObject& json, const inspect::MetaView& meta,
                  const ruxcomp::Section& section) {
  json.Objects("entries", section.entries(), [&](JsonObject& object, const ruxcomp::Entry& entry) {
    inspect::WriteEntry(object, inspect::KeyOf(section, entry), inspect::ValueOf(entry));
  });
  if (const auto* cells = CellsOf(meta, section)) {
    json.Array("cells", [&](support::JsonArray& list) { list.Items(*cells); });
  }
}

std::string FoundText(const inspect::MetaView& meta, const inspect::Found& found) {
  if (found.part) return inspect::PartText(*found.part) + '\n';
  if (found.entry) return inspect::ValueText(inspect::ValueOf(found.entry)) + '\n';
  return SectionText(meta, found.section);
}

std::string FoundJson(const inspect::MetaView& meta, const inspect::Found& found) {
  return support::JsonDocument([&](JsonObject& json) {
    json.Member("kind", ruxcomp::language::FindCompiledKind(found.section.kind())->keyword);
    json.Member("ordinal", found.section.ordinal());
    if (found.part) {
      json.Object("part", [&](JsonObject& part) { inspect::WritePart(part, *found.part); });
    } else if (found.entry) {
      json.Object("entry", [&](JsonObject& entry) {
        inspect::WriteEntry(entry, inspect::KeyOf(found.section, found.entry),
                            inspect::ValueOf(found.entry));
      });
    } else {
      WriteSection(json, meta, found.section);
    }
  });
}

support::ExitStatus Get(const Options& options) {
  const std::vector<inspect::PathStep> path = inspect::ParsePath(options.path);
  const inspect::MetaView meta(options.meta);
  const inspect::Found found = inspect::Find(meta, path);
  support::PrintOut(options.json ? FoundJson(meta, found) : FoundText(meta, found));
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpGet(Arguments& arguments) {
  const auto options = std::make_shared<Options>();
  arguments.Add("META", &options->meta, "The meta file to read").File().Required();
  arguments.Add("PATH", &options->path, "KIND/SECTION[/ENTRY[/PART]]").Required();
  arguments.Add("--json", &options->json, "Print JSON");
  arguments.Footer(
      "SECTION is a name, #ID or @ordinal (from 0); where sections have no names, the path goes\n"
      "on with the entry: GLOBAL/G_FAN_MAX. ENTRY is the key as the script writes it. PART is\n"
      "Type, the name of a part, or @n for the n-th value. A name in double quotes is taken as it\n"
      "stands, \"\" in it for a quote.\n\n"
      "With --json: {kind, ordinal} with entries: [entry] (and cells of a TABLE), entry, or part.\n"
      "entry: {name, values: [value]} or {name, type, parts: [part]}; part: {name, values};\n"
      "value: {class, value}. A text that is no UTF-8 comes with its bytes as \"hex\".\n\n"
      "Example:\n  rux get server.meta SENSOR/CPU0_TEMP/THRESHOLD_FH");
  return [options] { return Get(*options); };
}

}  // namespace rux::tool
