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

#include "findings/finding.h"
#include "findings/message_rows.h"
#include "findings/origin.h"
#include "reader/archive.h"
#include "reader/texts.h"
#include "run/findings.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/language/paths.h"
#include "sources/load.h"
#include "support/failure.h"

namespace rux::run {
namespace {

Argument Owned(const findings::Argument& argument) {
  if (const auto* text = std::get_if<std::string_view>(&argument)) return std::string(*text);
  return std::get<std::uint32_t>(argument);
}

}  // namespace

const char* const kPluginPath = RUX_PLUGIN_DIR "libruxrsparser.so.0";

void Run::LogSink::Take(const findings::Finding& finding) {
  Log& log = TheLog();
  Finding& kept = log.findings.emplace_back(
      Finding{&findings::RowOf(finding.message), log.phase, finding.origin, finding.other});
  if (finding.place) kept.place = Place{std::string(finding.place->file), finding.place->line};
  kept.arguments.reserve(finding.arguments.size());
  for (const findings::Argument& argument : finding.arguments) {
    kept.arguments.push_back(Owned(argument));
  }
}

Run::Run(std::string script, const std::optional<std::string>& text)
    : script_(std::move(script)),
      text_path_(text ? ruxcomp::language::WithSlashes(script_) : ""),
      sink_before_(findings::SetSink(&sink_)),
      choice_(text.has_value()) {
  if (text) reader::Texts::Put(text_path_, *text);
}

Run::~Run() {
  gccCompEnd();
  if (!text_path_.empty()) reader::Texts::Remove(text_path_);
  findings::SetSink(sink_before_);
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
    const reader::Archive archive;
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
  Log& log = TheLog();
  log.phase = phase;
  findings::Examine({});
  try {
    step();
  } catch (const std::bad_alloc&) {
    throw;  // that is not the script's fault
  } catch (const support::Failure&) {
    throw;
  } catch (const std::out_of_range& raised) {
    result_.raised = Raised{phase, findings::Examined(), raised.what()};
  } catch (const std::exception& raised) {
    result_.raised = Raised{phase, {}, raised.what()};
  }
  result_.findings.insert(result_.findings.end(), std::make_move_iterator(log.findings.begin()),
                          std::make_move_iterator(log.findings.end()));
  log.findings.clear();
}

}  // namespace rux::run
