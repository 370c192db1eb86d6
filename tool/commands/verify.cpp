// rux verify FILE... | --manifest MANIFEST
#include "compiled/verify.h"

#include <fmt/format.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "compiled/compiled_file.h"
#include "inspect/dump.h"
#include "inspect/entry_value.h"
#include "release/inspection.h"
#include "release/manifest.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "support/failure.h"
#include "support/input_file.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

using support::JsonArray;
using support::JsonObject;

struct VerifyOptions {
  std::vector<std::string> files;
  release::Inspection release;
  bool json = false;
  bool quiet = false;
};

struct Result {
  std::string file;
  std::string unreadable;  // why; empty when it could be read
  std::size_t size = 0;
  compiled::Summary summary;
  compiled::Faults faults;
  std::string cause;  // what may have happened to a file that is not sound

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
    if (!result.faults.empty()) result.cause = compiled::LikelyCause(bytes, result.faults);
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
    return support::SafeFormat("cannot load {}: {}{}\n", result.file,
                               result.faults.list().front().reason,
                               result.cause.empty() ? "" : "; " + result.cause);
  }
  std::string text = support::SafeFormat("{} is damaged{}\n", result.file,
                                         result.cause.empty() ? "" : ": " + result.cause);
  for (const compiled::Fault& fault : result.faults.list())
    text += support::SafeFormat("  {}\n", compiled::FaultText(fault));
  if (result.not_shown() > 0) text += fmt::format("  and {} more\n", result.not_shown());
  return text;
}

void WriteFault(JsonObject& json, const compiled::Fault& fault) {
  json.Member("offset", fault.offset);
  json.Member("record", fault.record);
  json.Member("field", fault.field);
  json.Member("reason", fault.reason);
}

void WriteSummary(JsonObject& json, const compiled::Summary& summary) {
  inspect::WriteForm(json, summary.form);
  json.Member("version", summary.version);
  json.Member("created", summary.creation_time);
  json.Object("counts", [&](JsonObject& counts) {
    for (const auto& [name, count] : summary.counts) counts.Member(name, count);
  });
  json.Array("notes", [&](JsonArray& notes) { notes.Items(summary.notes); });
}

void WriteResult(JsonObject& json, const Result& result) {
  inspect::WriteText(json, "file", result.file);
  json.Member("valid", result.is_sound());
  if (!result.unreadable.empty()) return json.Member("error", result.unreadable);
  json.Member("bytes", result.size);
  WriteSummary(json, result.summary);
  json.Objects("faults", result.faults.list(), WriteFault);
  json.Member("faults_not_shown", result.not_shown());
  if (!result.cause.empty()) json.Member("cause", result.cause);
}

support::Failure WrongVerifyUsage(const char* reason) {
  return support::Failure(support::ExitStatus::kWrongUsage, "{}\nSee 'rux help verify'.", reason);
}

// Whether all files are sound, which `report` is to say of each.
template <class Report>
bool VerifyEach(const std::vector<std::string>& files, Report report) {
  bool are_sound = true;
  for (const std::string& file : files) {
    const Result result = ResultOf(file);
    are_sound &= result.is_sound();
    report(result);
  }
  return are_sound;
}

bool VerifyForPrograms(const std::vector<std::string>& files) {
  bool are_sound = false;
  support::PrintOut(support::JsonDocument([&](JsonObject& json) {
    json.Schema(1);
    json.Array("files", [&](JsonArray& list) {
      are_sound = VerifyEach(files, [&](const Result& result) {
        list.Object([&](JsonObject& object) { WriteResult(object, result); });
      });
    });
    json.Member("valid", are_sound);
  }));
  return are_sound;
}

bool VerifyAsText(const std::vector<std::string>& files, bool quiet) {
  return VerifyEach(files, [&](const Result& result) {
    if (!result.is_sound()) {
      support::PrintError("rux: error: " + FaultsText(result));
    } else if (!quiet) {
      support::PrintOut(SoundText(result));
    }
  });
}

support::ExitStatus VerifyRelease(const VerifyOptions& options) {
  if (options.release.manifest == support::kStandardInput && options.release.folder.empty())
    throw WrongVerifyUsage("a manifest on standard input needs --folder");
  const release::Manifest manifest = release::ReadManifest(options.release.manifest);
  const std::vector<release::Problem> problems = release::ProblemsIn(manifest, options.release);
  if (options.json) {
    support::PrintOut(support::JsonDocument([&](JsonObject& json) {
      release::WriteProblems(json, options.release, manifest, problems);
    }));
  } else {
    for (const release::Problem& problem : problems)
      support::PrintError(support::SafeFormat("rux: error: {}: {}\n", problem.path, problem.text));
    if (problems.empty() && !options.quiet) {
      support::PrintOut(
          support::SafePath(options.release.manifest) +
          fmt::format(": {} as recorded\n", support::CountText(manifest.files.size(), "file")));
    }
  }
  return problems.empty() ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
}

support::ExitStatus VerifyFiles(const VerifyOptions& options) {
  if (!options.release.manifest.empty()) return VerifyRelease(options);
  if (!options.release.folder.empty() || options.release.with_sources)
    throw WrongVerifyUsage("--folder and --sources need --manifest");
  if (options.files.empty()) throw WrongVerifyUsage("FILE is required, or --manifest");
  const bool are_sound =
      options.json ? VerifyForPrograms(options.files) : VerifyAsText(options.files, options.quiet);
  return are_sound ? support::ExitStatus::kDone : support::ExitStatus::kTrouble;
}

}  // namespace

Action SetUpVerify(Arguments& arguments) {
  const auto options = std::make_shared<VerifyOptions>();
  arguments
      .Add("FILE", &options->files,
           "The meta files and debug meta files to check; - for standard input")
      .File();
  arguments
      .Add("--manifest", &options->release.manifest,
           "Verify the files of a release instead: exactly those that this manifest lists")
      .File("FILE")
      .Without({"FILE"});
  arguments
      .Add("--folder", &options->release.folder,
           "The folder of the release (default: that of the manifest)")
      .File("FOLDER");
  arguments.Add("--sources", &options->release.with_sources,
                "Also verify the sources that the manifest lists");
  arguments.Add("--json", &options->json,
                "Print JSON (docs/verify-json.md; docs/release.schema.json for --manifest)");
  arguments.Add("-q,--quiet", &options->quiet, "Print nothing for a sound file")
      .Without({"--json"});
  arguments.Footer(
      "Every offset, length, count, identifier and reference is checked. A fault is reported with\n"
      "its offset, record, field and reason. A likely cause, such as a truncated file, comes\n"
      "first. The exit status is 3 when a file is not sound or cannot be read; for --manifest, it\n"
      "is 1 when a file is missing, extra or not as recorded.\n\n"
      "Examples:\n"
      "  rux verify server.meta server.metad\n"
      "  rux verify --manifest out/manifest.json");
  return [options] { return VerifyFiles(*options); };
}

}  // namespace rux::tool
