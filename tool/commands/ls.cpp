// rux ls FILE [KIND]
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "inspect/file_view.h"
#include "inspect/section_list.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "tool/command.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

using support::JsonObject;

struct LsOptions {
  std::string file;
  std::string kind;
  inspect::SectionFilter filter;
  std::string color = "auto";
  bool is_long = false;
  bool tree = false;
  bool json = false;
};

// The sections that the options select, of one kind or of all.
struct Selected {
  const inspect::SectionKind* kind;
  std::vector<std::size_t> ordinals;
};

std::vector<Selected> SelectedOf(const inspect::FileView& view, const LsOptions& options) {
  if (!options.kind.empty()) {
    const inspect::SectionKind& kind = view.ExpectKind(options.kind);
    return {{&kind, inspect::SectionsThatFit(view, kind, options.filter)}};
  }
  std::vector<Selected> all;
  for (const inspect::SectionKind& kind : ruxcomp::language::kSectionKinds) {
    std::vector<std::size_t> ordinals = inspect::SectionsThatFit(view, kind, options.filter);
    if (!ordinals.empty()) all.push_back({&kind, std::move(ordinals)});
  }
  return all;
}

std::string ListText(const inspect::FileView& view, const LsOptions& options) {
  const support::OutputStyle style = support::StyleOfOutput(options.color);
  if (options.tree) return inspect::TreeText(view, style);
  const bool lists_sections =
      !options.kind.empty() || options.is_long || !options.filter.is_empty();
  if (!lists_sections) return inspect::KindsText(view, style.width);
  std::string text;
  for (const Selected& each : SelectedOf(view, options)) {
    if (options.kind.empty())
      text += (text.empty() ? "[" : "\n[") + std::string(each.kind->keyword) + "]\n";
    text += inspect::SectionsText(view, *each.kind, each.ordinals, options.is_long, style);
  }
  return text;
}

void WriteList(JsonObject& json, const inspect::FileView& view, const LsOptions& options) {
  if (options.tree) return inspect::WriteTree(json, view);
  if (options.kind.empty() && !options.is_long && options.filter.is_empty())
    return inspect::WriteKinds(json, view);
  const std::vector<Selected> selected = SelectedOf(view, options);
  if (!options.kind.empty()) {
    const Selected& one = selected.front();
    return inspect::WriteSections(json, view, *one.kind, one.ordinals, options.is_long);
  }
  json.Objects("kinds", selected, [&](JsonObject& object, const Selected& each) {
    inspect::WriteSections(object, view, *each.kind, each.ordinals, options.is_long);
  });
}

support::ExitStatus Ls(const LsOptions& options) {
  const std::unique_ptr<inspect::FileView> view = inspect::OpenView(options.file);
  support::PrintOut(options.json ? support::JsonDocument(
                                       [&](JsonObject& json) { WriteList(json, *view, options); })
                                 : ListText(*view, options));
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpLs(Arguments& arguments) {
  const auto options = std::make_shared<LsOptions>();
  AddViewedFile(arguments, options->file);
  arguments.Add("KIND", &options->kind, "List the sections of this kind, such as SENSOR");
  arguments.Add("-l,--long", &options->is_long, "Also show types, limits and parents");
  AddSectionFilter(arguments, options->filter);
  // It shows the whole machine.
  arguments.Add("--tree", &options->tree, "Show the groups and their sensors as trees")
      .Without({"KIND", "--long", "--name", "--file"});
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/ls.schema.json)");
  arguments.Footer(
      "Without KIND, the kinds are listed with the number of sections of each; with --long,\n"
      "--name or --file, the sections of all kinds.\n\n"
      "Examples:\n  rux ls server.meta SENSOR\n  rux ls -l server.meta sensor --name 'CPU*'");
  return [options] { return Ls(*options); };
}

}  // namespace rux::tool
