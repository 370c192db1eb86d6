// rux verify FILE...
#include "compiled/verify.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "compiled/compiled_file.h"
#include "inspect/dump.h"
#include "inspect/value_json.h"
#include "support/failure.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

struct Options {
  std::vector<std::string> files;
  bool json = false;
  bool quiet = false;
};

struct Result {
  std::string file;
  std::string unreadable;  // why; empty when it could be read
  std::size_t size = 0;
  compiled::Summary summary;
  compiled::Faults faults;

  bool is_sound() const { return unreadable.empty() && faults.empty(); }
  std::size_t not_shown() const { return faults.count() - faults.list().size(); }
};

Result ResultOf(const std::string& file) {
  Result result;
  result.file = file;
  try {
    const std::string bytes = compiled::ReadWholeFile(file);
    result.size = bytes.size();
    result.faults = compiled::Verify(bytes, &result.summary);
  } catch (const support::Failure& failure) {
    result.unreadable = failure.what();
  }
  return result;
}

std::string SoundText(const Result& result) {
  const compiled::Summary& summary = result.summary;
  std::string text =
      inspect::TitleText(result.file, summary.form, summary.version, summary.creation_time) +
      fmt::format(", {} bytes", result.size);
  for (const auto& [name, count] : summary.counts) text += fmt::format(", {} {}", count, name);
  text += '\n';
  for (const std::string& note : summary.notes) text += "  note: " + note + '\n';
  return text;
}

std::string FaultsText(const Result& result) {
  if (!result.unreadable.empty()) return result.unreadable + '\n';
  if (result.summary.form == compiled::Form::kNone) {
    return "cannot load " + result.file + ": " + result.faults.list().front().reason + '\n';
  }
  std::string text = result.file + " is damaged\n";
  for (const compiled::Fault& fault : result.faults.list())
    text += "  " + compiled::FaultText(fault) + '\n';
  if (result.not_shown() > 0) text += fmt::format("  and {} more\n", result.not_shown());
  return text;
}

void WriteFaults(support::JsonWriter& json, const compiled::Faults& faults) {
  json.Key("faults").Open('[');
  for (const compiled::Fault& fault : faults.list()) {
    json.Open('{').Key("offset").Number(fault.offset).Key("record").String(fault.record);
    json.Key("field").String(fault.field).Key("reason").String(fault.reason).Close();
  }
  json.Close();
}

void WriteSummary(support::JsonWriter& json, const compiled::Summary& summary) {
  inspect::WriteForm(json, summary.form);
  json.Key("version").Number(summary.version).Key("created").Number(summary.creation_time);
  json.Key("counts").Open('{');
  for (const auto& [name, count] : summary.counts) json.Key(name).Number(count);
  json.Close().Key("notes").Open('[');
  for (const std::string& note : summary.notes) json.String(note);
  json.Close();
}

void WriteResult(support::JsonWriter& json, const Result& result) {
  inspect::WriteText(json.Open('{'), "file", result.file);
  json.Key("valid").Bool(result.is_sound());
  if (!result.unreadable.empty()) {
    json.Key("error").String(result.unreadable);
  } else {
    json.Key("bytes").Number(result.size);
    WriteSummary(json, result.summary);
    WriteFaults(json, result.faults);
    json.Key("faults_not_shown").Number(result.not_shown());
  }
  json.Close();
}

support::ExitStatus VerifyFiles(const Options& options) {
  bool are_sound = true;
  constexpr std::size_t kSchema = 1;  // raised when a member changes its meaning or goes away
  support::JsonWriter json;
  json.Open('{').Key("schema").Number(kSchema).Key("files").Open('[');
  for (const std::string& file : options.files) {
    const Result result = ResultOf(file);
    are_sound &= result.is_sound();
    if (options.json) {
      WriteResult(json, result);
    } else if (!result.is_sound()) {
      support::PrintError("rux: error: " + FaultsText(result));
    } else if (!options.quiet) {
      support::PrintOut(SoundText(result));
    }
  }
  json.Close().Key("valid").Bool(are_sound).Close();
  if (options.json) support::PrintOut(json.TakeText());
  return are_sound ? support::ExitStatus::kDone : support::ExitStatus::kTrouble;
}

}  // namespace

Action SetUpVerify(Arguments& arguments) {
  const auto options = std::make_shared<Options>();
  arguments.Add("FILE", &options->files, "The meta files and debug meta files to check")
      .File()
      .Required();
  arguments.Add("--json", &options->json, "Print JSON (docs/verify-json.md)");
  arguments.Add("-q,--quiet", &options->quiet, "Print nothing for a sound file").Without("--json");
  arguments.Footer(
      "Every offset, length, count, identifier and reference is checked. A fault is told with its\n"
      "offset, the record and the field that it is in, and the reason. The exit status is 3 when "
      "a\n"
      "file is damaged or cannot be read.\n\n"
      "Example:\n  rux verify server.meta server.metad");
  return [options] { return VerifyFiles(*options); };
}

}  // namespace rux::tool
