#include "reader/script_file.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "findings/origin.h"
#include "reader/archive.h"
#include "reader/include_folders.h"
#include "reader/messages.h"
#include "reader/script.h"
#include "reader/script_root.h"
#include "reader/source.h"
#include "ruxcomp/language/paths.h"

namespace ruxcomp::reader {
namespace {

// The list of open files, the innermost include first. A plain pointer has no destructor that could
// run before a host closes its last file.
ScriptFile* g_open_files = nullptr;
std::size_t g_including_count = 0;

// What was opened since no file was including.
std::size_t g_opened_count = 0;
std::size_t g_opened_text = 0;

// Whether too many files would include what is opened next, or it would be one file too many.
bool AreTooMany() {
  if (g_including_count == 0) return false;
  return g_including_count >= kMostOpen || g_opened_count >= kMostOpened ||
         g_opened_text >= kMostText;
}

// The message about a refusal; none when the null handle is all that a host gets.
std::optional<MessageId> MessageOf(Refusal reason) {
  switch (reason) {
    case Refusal::kTooMany:
      return MessageId::kTooManyIncludes;
    case Refusal::kTooLarge:
      return MessageId::kScriptTooLarge;
    case Refusal::kOutOfMemory:
      return MessageId::kOutOfMemory;
    default:
      return std::nullopt;
  }
}

// What the error number of a failed system call means.
Refusal ReasonOf(int error) {
  if (error == ENOENT || error == ENOTDIR) return Refusal::kNotFound;
  return error == EISDIR ? Refusal::kIsFolder : Refusal::kCannotBeRead;
}

// Leaves out a record that does not fit into memory; what was reported stays reported.
template <typename Record>
void RecordInMemory(Record record) {
  try {
    record();
  } catch (const std::bad_alloc&) {
  }
}

}  // namespace

std::unique_ptr<ScriptFile> ScriptFile::Open(const std::string& path, std::size_t largest,
                                             Streams streams) {
  Refused refused{Refusal::kOutOfMemory, 0};
  std::unique_ptr<ScriptFile> file;
  try {
    file = TryOpen(path, largest, streams, refused);
  } catch (const std::bad_alloc&) {
    refused = {Refusal::kOutOfMemory, 0};
  }
  if (file == nullptr) Refuse(path, refused);
  return file;
}

std::unique_ptr<ScriptFile> ScriptFile::TryOpen(const std::string& path, std::size_t largest,
                                                Streams streams, Refused& refused) {
  const auto refuse = [&](Refusal reason, int error = 0) {
    refused = {reason, error};
    return nullptr;
  };
  const std::optional<Found> found = FindScript(path);
  if (!found) return refuse(ReasonOf(errno), errno);
  const Source& source = found->source;
  if (IsIncluding(source.identity)) return refuse(Refusal::kIsOpenAlready);
  if (source.kind == SourceKind::kStream && streams == Streams::kOpen) {
    return refuse(Refusal::kIsStream);
  }
  if (AreTooMany()) return refuse(Refusal::kTooMany);
  if (source.size > largest) return refuse(Refusal::kTooLarge);
  std::optional<std::string> text = ReadSource(source, largest);
  if (!text) return refuse(ReasonOf(errno), errno);
  if (text->size() > largest) return refuse(Refusal::kTooLarge);
  std::unique_ptr<ScriptFile> file(new ScriptFile(*found, std::move(*text)));
  file->EnterArchive(source.path);
  return file;
}

// The innermost open file that may include what is opened next; null when there is none.
const ScriptFile* ScriptFile::FindIncluding() {
  const ScriptFile* file = g_open_files;
  while (file != nullptr && !file->is_including_) file = file->next_open_;
  return file;
}

std::string ScriptFile::ActualPath(const std::string& path) {
  const ScriptFile* includer = FindIncluding();
  if (includer == nullptr) return ScriptRoot::ActualPath(path);
  // The library puts the folder of the including file before what the item names.
  const std::string_view folder = language::FolderOf(includer->path_);
  if (path.compare(0, folder.size(), folder) != 0) return path;
  return std::string(language::FolderOf(includer->actual_path_)).append(path, folder.size());
}

// The error number is that of the path itself.
std::optional<ScriptFile::Found> ScriptFile::FindScript(const std::string& path) {
  const std::string actual = ActualPath(path);
  if (const std::optional<Source> source = FindSource(actual)) return Found{*source, path, actual};
  const int error = errno;
  std::optional<Found> found;
  if (ReasonOf(error) == Refusal::kNotFound) found = FindInFolders(path);
  errno = error;
  return found;
}

std::optional<ScriptFile::Found> ScriptFile::FindInFolders(const std::string& path) {
  const ScriptFile* includer = FindIncluding();
  if (includer == nullptr) return std::nullopt;
  const std::size_t folder_size = language::FolderSize(includer->path_);
  if (path.size() < folder_size) return std::nullopt;
  const std::string name = language::WithSlashes(path.substr(folder_size));
  for (const std::string& folder : IncludeFolders::Current()) {
    const char* separator = folder.back() == '/' ? "" : "/";
    const std::optional<Source> source =
        FindSource(std::string(folder).append(separator).append(name));
    if (!source) continue;
    const std::string actual = language::ToLibraryPath(source->path);
    return Found{*source, IncludeFolders::NameOf(actual), actual};
  }
  return std::nullopt;
}

void ScriptFile::Refuse(const std::string& path, const Refused& refused) {
  if (const auto message = MessageOf(refused.reason)) Report(path, *message, 1);
  Archive* archive = Archive::Current();
  if (archive == nullptr) return;
  RecordInMemory([&] {
    archive->refused_.push_back({ActualPath(path), refused.reason, refused.error, FindIncluder(),
                                 archive->scripts_.size()});
  });
}

ScriptFile::ScriptFile(const Found& found, std::string text)
    : path_(found.path),
      actual_path_(found.actual),
      identity_(found.source.identity),
      text_(std::move(text)),
      next_open_(std::exchange(g_open_files, this)),
      includer_(delivered_) {
  if (!IsAnyIncluding()) g_opened_count = g_opened_text = 0;
  ++g_opened_count;
  g_opened_text += text_.size();
}

ScriptFile::~ScriptFile() {
  ScriptFile** link = &g_open_files;
  while (*link != this) link = &(*link)->next_open_;
  *link = next_open_;
  if (is_including_) --g_including_count;
  // The items of this file go away: the item that includes it now includes what follows.
  if (Holds(delivered_)) delivered_ = includer_;
  for (ScriptFile* file = g_open_files; file != next_open_; file = file->next_open_) {
    if (Holds(file->includer_)) file->includer_ = includer_;
  }
}

void ScriptFile::NoteRequest() {
  if (!is_including_) ++g_including_count;
  is_including_ = true;
}

bool ScriptFile::IsAnyIncluding() { return g_including_count > 0; }

bool ScriptFile::IsIncluding(const SourceIdentity& identity) {
  // Files that were opened and forgotten are further down than those that are being read.
  std::size_t left = g_including_count;
  for (const ScriptFile* file = g_open_files; left > 0; file = file->next_open_) {
    if (!file->is_including_) continue;
    if (file->identity_ == identity) return true;
    --left;
  }
  return false;
}

Includer ScriptFile::FindIncluder() {
  for (const ScriptFile* file = g_open_files; file != nullptr; file = file->next_open_) {
    if (!file->Holds(delivered_) || file->archived() == nullptr) continue;
    return ArchivedItem{file->archived_at_, file->script_->PlaceOf(*delivered_)};
  }
  return std::nullopt;
}

bool ScriptFile::Holds(const Item* item) const {
  return item != nullptr && script_ != nullptr && script_->Holds(*item);
}

void ScriptFile::EnterArchive(const std::string& opened) {
  Archive* archive = Archive::Current();
  if (archive == nullptr) return;
  archive->scripts_.push_back({path_, opened, FindIncluder(), nullptr, {}});
  archive_ = archive->id_;
  archived_at_ = archive->scripts_.size() - 1;
}

ArchivedScript* ScriptFile::archived() const {
  Archive* archive = Archive::Current();
  if (archive == nullptr || archive->id_ != archive_) return nullptr;
  return &archive->scripts_[archived_at_];
}

bool ScriptFile::Parse() {
  if (script_ != nullptr) return true;
  try {
    Scan();
    return true;
  } catch (const std::bad_alloc&) {
    ReportProblem({MessageId::kOutOfMemory, 1, {}});
    return false;
  }
}

void ScriptFile::Scan() {
  const auto report = [this](const Problem& problem) { ReportProblem(problem); };
  if (archived() == nullptr) {
    script_ = std::make_shared<Script>(std::move(text_), report);
    return;
  }
  Archive& archive = *Archive::Current();
  if (const ArchivedScript* known = archive.FindParsed(identity_, text_)) {
    script_ = known->script;
    text_ = std::string();
    for (const Problem& problem : known->problems) ReportProblem(problem);
  } else {
    script_ = std::make_shared<Script>(std::move(text_), report);
  }
  archive.KeepParsed(archived_at_, identity_, script_);
}

void ScriptFile::ReportProblem(const Problem& problem) const {
  ArchivedScript* kept = archived();
  findings::Origin origin;
  if (kept != nullptr) origin.script = static_cast<std::uint32_t>(archived_at_);
  Report(path_, problem.message, problem.line, origin);
  if (kept != nullptr) RecordInMemory([&] { kept->problems.push_back(problem); });
}

}  // namespace ruxcomp::reader
