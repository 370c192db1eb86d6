#include "run/run.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <iterator>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "findings/finding.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/origin.h"
#include "findings/tally.h"
#include "frontend/plugin.h"
#include "reader/archive.h"
#include "reader/script_root.h"
#include "reader/texts.h"
#include "run/log.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/language/paths.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/safe_text.h"

namespace rux::run {
namespace {

Argument Owned(const ruxcomp::findings::Argument& argument) {
  if (const auto* text = std::get_if<std::string_view>(&argument)) return support::Excerpted(*text);
  return std::get<std::uint32_t>(argument);
}

}  // namespace

const char* const kPluginPath = ruxcomp::core::plugin::kPath;

void Run::LogSink::Take(const ruxcomp::findings::Finding& finding) {
  Log& log = ProcessLog();
  Finding kept{&ruxcomp::findings::RowOf(finding.message), finding.origin, finding.other};
  if (!log.Wants(*kept.row, kept.origin)) return;
  if (finding.place) kept.place = Place{std::string(finding.place->file), finding.place->line};
  kept.arguments.reserve(finding.arguments.size());
  for (const ruxcomp::findings::Argument& argument : finding.arguments) {
    kept.arguments.push_back(Owned(argument));
  }
  log.Keep(std::move(kept));
}

Run::Run(std::string script, const std::optional<std::string>& text, ruxcomp::findings::Most most,
         ruxcomp::findings::MessageRows left_out)
    : script_(std::move(script)),
      text_path_(
          text ? ruxcomp::language::WithSlashes(ruxcomp::reader::ScriptRoot::ActualPath(script_))
               : ""),
      sink_before_(ruxcomp::findings::SetSink(&sink_)),
      choice_(text.has_value()) {
  ProcessLog().Limit(most, left_out);
  if (text) ruxcomp::reader::Texts::Put(text_path_, *text);
}

Run::~Run() {
  gccCompEnd();
  if (!text_path_.empty()) ruxcomp::reader::Texts::Remove(text_path_);
  ruxcomp::findings::SetSink(sink_before_);
}

void Run::ReadAndCheck() {
  ReadSources();
  if (result_.opened && !result_.raised) {
    Guarded(Phase::kCheck, [&] { result_.accepted = gccCheck() != 0; });
  }
}

void Run::Write(const std::function<void()>& step) {
  result_.sources.DropSections();
  Guarded(Phase::kOutput, step);
}

void Run::ReadSources() {
  {
    const ruxcomp::reader::Archive archive;
    Guarded(Phase::kStart, [&] { result_.opened = gccCompStart(script_) != 0; });
    if (result_.opened) Guarded(Phase::kParse, [] { gccParse(); });
    result_.has_foreign_reader = choice_.is_foreign();
    if (!result_.has_foreign_reader) result_.sources = sources::SourceSet(archive);
  }
  if (result_.has_foreign_reader) result_.sources = sources::Load(script_);
  // The library has not seen what follows an error that it raised.
  result_.files = result_.raised ? sources::Load(script_).files() : result_.sources.files();
}

void Run::Guarded(Phase phase, const std::function<void()>& step) {
  Log& log = ProcessLog();
  log.Begin(phase);
  ruxcomp::findings::Examine({});
  try {
    step();
  } catch (const std::bad_alloc&) {
    throw;  // not the script's fault
  } catch (const support::Failure&) {
    throw;
  } catch (const std::out_of_range& raised) {
    result_.raised = Raised{phase, ruxcomp::findings::Examined(), raised.what()};
  } catch (const std::exception& raised) {
    result_.raised = Raised{phase, {}, raised.what()};
  }
  std::vector<Finding> found = log.Take();
  result_.findings.insert(result_.findings.end(), std::make_move_iterator(found.begin()),
                          std::make_move_iterator(found.end()));
  result_.tally = log.tally();
}

}  // namespace rux::run
