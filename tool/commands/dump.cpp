// rux dump FILE [KIND]
#include "inspect/dump.h"

#include <memory>
#include <string>
#include <string_view>

#include "compiled/compiled_file.h"
#include "compiled/debug_meta.h"
#include "compiled/file.h"
#include "compiled/meta.h"
#include "inspect/file_view.h"
#include "inspect/section_list.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "support/failure.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

struct DumpOptions {
  std::string file;
  std::string kind;
  inspect::SectionFilter filter;
  std::string color = "auto";
  bool types = false;
  bool json = false;
  bool raw = false;
};

// What the two forms of compiled files take to be dumped.
struct DebugMetaTraits {
  static constexpr auto kDecode = compiled::DecodeDebugMeta;
  static constexpr auto kList = inspect::ListDebugMeta;
  static constexpr auto kWriteJson = inspect::WriteDebugMetaJson;
};

struct MetaTraits {
  static constexpr auto kDecode = compiled::DecodeMeta;
  static constexpr auto kList = inspect::ListMeta;
  static constexpr auto kWriteJson = inspect::WriteMetaJson;
};

inspect::Selection SelectionOf(const DumpOptions& options, std::string_view bytes) {
  if (options.kind.empty() && options.filter.is_empty()) return {};
  return {*inspect::ViewOf(options.file, bytes), options.kind, options.filter};
}

template <class Traits>
void DumpForm(const DumpOptions& options, std::string_view bytes) {
  const inspect::Selection selection = SelectionOf(options, bytes);
  compiled::Faults none;  // of a file that was verified
  const auto meta = Traits::kDecode(
      bytes, none, options.raw ? compiled::Keep::kPieces : compiled::Keep::kRecords);
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    if (options.json) {
      return Traits::kWriteJson(options.file, meta, selection, inspect::RawJson(bytes, options.raw),
                                out);
    }
    inspect::Listing listing(
        bytes, {options.raw, options.types, support::StyleOfOutput(options.color)}, out);
    Traits::kList(options.file, meta, selection, listing);
  });
}

support::ExitStatus Dump(const DumpOptions& options) {
  const compiled::CompiledFile file(options.file);
  if (file.form() == compiled::Form::kDebugMeta) {
    DumpForm<DebugMetaTraits>(options, file.bytes());
  } else {
    DumpForm<MetaTraits>(options, file.bytes());
  }
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpDump(Arguments& arguments) {
  const auto options = std::make_shared<DumpOptions>();
  AddViewedFile(arguments, options->file);
  arguments.Add("KIND", &options->kind, "Print only sections of this kind, such as SENSOR");
  AddSectionFilter(arguments, options->filter);
  arguments.Add("--types", &options->types,
                "Also print identifiers, classes and notations, and the symbol tables");
  arguments.Add("--raw", &options->raw, "Also print the offset and the bytes of every field");
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/dump-json.md)");
  arguments.Footer(
      "A debug meta file is printed with the files and lines of the script, a meta file with the\n"
      "values of its entries.\n\n"
      "Examples:\n  rux dump server.metad\n  rux dump server.metad SENSOR --name 'CPU*'\n"
      "  rux dump --raw server.meta");
  return [options] { return Dump(*options); };
}

}  // namespace rux::tool
