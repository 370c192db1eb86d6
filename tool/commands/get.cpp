// rux get FILE PATH
#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "inspect/path.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/wrap.h"
#include "tool/command.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

using support::JsonObject;

struct GetOptions {
  std::string file;
  std::string path;
  std::string color = "auto";
  bool json = false;
};

std::string SectionText(const inspect::FileView& view, const inspect::Found& found,
                        support::OutputStyle style) {
  const std::vector<inspect::KeyedValue> entries = view.EntriesOf(*found.kind, found.ordinal);
  std::size_t width = 0;
  for (const inspect::KeyedValue& entry : entries)
    width = std::max(width, support::Columns(support::SafeText(entry.key)));
  std::string text;
  for (const inspect::KeyedValue& entry : entries) {
    const std::string key = support::SafeText(entry.key);
    text += support::Bold(key, style.uses_colour);
    text.append(width - support::Columns(key) + 2, ' ');
    text += support::WrappedPieces(inspect::ValuePieces(entry.value), style.width, width + 2);
    text += '\n';
  }
  if (const auto* cells = view.CellsOf(*found.kind, found.ordinal))
    text += inspect::CellsText(*cells);
  return text;
}

void WriteSection(JsonObject& json, const inspect::FileView& view, const inspect::Found& found) {
  json.Objects("entries", view.EntriesOf(*found.kind, found.ordinal),
               [&](JsonObject& object, const inspect::KeyedValue& entry) {
                 inspect::WriteEntry(object, entry.key, entry.value);
               });
  if (const auto* cells = view.CellsOf(*found.kind, found.ordinal)) {
    json.Array("cells", [&](support::JsonArray& list) { list.Items(*cells); });
  }
}

std::string FoundText(const inspect::FileView& view, const inspect::Found& found,
                      const std::string& color) {
  const support::OutputStyle style = support::StyleOfOutput(color);
  const auto wrapped = [&](const std::vector<std::string>& pieces) {
    return support::WrappedPieces(pieces, style.width, 0) + '\n';
  };
  if (found.part) return wrapped(inspect::PartPieces(*found.part));
  if (found.entry) return wrapped(inspect::ValuePieces(found.entry->value));
  return SectionText(view, found, style);
}

std::string FoundJson(const inspect::FileView& view, const inspect::Found& found) {
  return support::JsonDocument([&](JsonObject& json) {
    json.Member("kind", found.kind->keyword);
    json.Member("ordinal", found.ordinal);
    if (found.part) {
      json.Object("part", [&](JsonObject& part) { inspect::WritePart(part, *found.part); });
    } else if (found.entry) {
      json.Object("entry", [&](JsonObject& entry) {
        inspect::WriteEntry(entry, found.entry->key, found.entry->value);
      });
    } else {
      WriteSection(json, view, found);
    }
  });
}

support::ExitStatus Get(const GetOptions& options) {
  const std::vector<inspect::PathStep> path = inspect::ParsePath(options.path);
  const std::unique_ptr<inspect::FileView> view = inspect::OpenView(options.file);
  const inspect::Found found = view->Find(path);
  support::PrintOut(options.json ? FoundJson(*view, found)
                                 : FoundText(*view, found, options.color));
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpGet(Arguments& arguments) {
  const auto options = std::make_shared<GetOptions>();
  AddViewedFile(arguments, options->file);
  arguments.Add("PATH", &options->path, "KIND/SECTION[/ENTRY[/PART]]").Required();
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/get.schema.json)");
  arguments.Footer(
      "SECTION is a name, #ID or @ordinal (from 0); where sections have no names, the entry\n"
      "follows directly: GLOBAL/G_FAN_MAX. ENTRY is the key as the script writes it. PART is\n"
      "Type, the name of a part, or @n for the n-th value. A name in double quotes is taken\n"
      "literally; \"\" in it is one quote. For a debug meta file, numbers and types are printed\n"
      "as the script writes them, and WORD/NAME is a defined word.\n\n"
      "Example:\n  rux get server.meta SENSOR/CPU0_TEMP/THRESHOLD_FH");
  return [options] { return Get(*options); };
}

}  // namespace rux::tool
