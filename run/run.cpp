#include "run/run.h"

#include <cstddef>
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
#include "reader/script_file.h"
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
  if (!log.Wants(*kept.row, kept.origin, run_.IsMarked(finding.origin.script))) return;
  if (finding.place) kept.place = Place{std::string(finding.place->file), finding.place->line};
  kept.arguments.reserve(finding.arguments.size());
  for (const ruxcomp::findings::Argument& argument : finding.arguments) {
    kept.arguments.push_back(Owned(argument));
  }
  log.Keep(std::move(kept));
}

Run::Run(std::string script, const std::optional<Text>& text, ruxcomp::findings::Most most,
         ruxcomp::findings::MessageRows left_out, std::string_view marker)
    : script_(std::move(script)),
      marker_(marker),
      sink_(*this),
      sink_before_(ruxcomp::findings::SetSink(&sink_)),
      choice_(text.has_value()) {
  ProcessLog().Limit(most, left_out);
  if (!text) return;
  text_path_ =
      text->path.empty()
          ? ruxcomp::language::WithSlashes(ruxcomp::reader::ScriptFile::ActualPath(script_))
          : text->path;
  ruxcomp::reader::Texts::Put(text_path_, text->bytes);
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
    archive_ = &archive;
    Guarded(Phase::kStart, [&] { result_.opened = gccCompStart(script_) != 0; });
    if (result_.opened) Guarded(Phase::kParse, [] { gccParse(); });
    result_.has_foreign_reader = choice_.is_foreign();
    archive_ = nullptr;
    if (!result_.has_foreign_reader) result_.sources = sources::SourceSet(archive);
  }
  if (result_.has_foreign_reader) result_.sources = sources::Load(script_);
  // The library has not seen what follows an error that it raised.
  result_.files = result_.raised ? sources::Load(script_).files() : result_.sources.files();
}

// A script is looked through once, when something is found in it.
bool Run::IsMarked(std::uint32_t script) {
  const std::size_t known =
      archive_ != nullptr ? archive_->scripts().size() : result_.sources.openings().size();
  if (marker_.empty() || script >= known) return false;
  if (script >= is_marked_.size()) is_marked_.resize(known);
  if (is_marked_[script]) return *is_marked_[script];
  const std::string* text = nullptr;
  if (archive_ == nullptr) {
    text = &result_.sources.openings()[script].file->text();
  } else if (const auto& archived = archive_->scripts()[script].script; archived != nullptr) {
    text = &archived->text();
  }
  if (text == nullptr) return false;
  return *(is_marked_[script] = text->find(marker_) != std::string::npos);
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
