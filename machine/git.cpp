#include "machine/git.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/compiled_file.h"
#include "ruxcomp/file/uninterrupted.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/program.h"

namespace rux::machine {
namespace {

using support::Descriptor;
using support::ExitStatus;

// What git reports is left out: it is about the repository, and the failures here name the file.
pid_t StartGit(std::vector<std::string> words, int input, int output) {
  const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
  return support::StartProgram(std::move(words), {input, output, nowhere.number()},
                               "a file of a revision is read");
}

}  // namespace

GitRevision::GitRevision(std::string revision) : revision_(std::move(revision)) {
  support::Pipe questions = support::OpenPipe();
  support::Pipe answers = support::OpenPipe();
  process_ = StartGit({"git", "cat-file", "--batch", "--follow-symlinks"}, questions.read.number(),
                      answers.write.number());
  questions_ = std::move(questions.write);
  answers_ = std::move(answers.read);
  if (!Ask("^{tree}"))
    throw support::Failure(ExitStatus::kTrouble, "git has no revision {}", revision_);
}

GitRevision::~GitRevision() {
  questions_.Close();
  answers_.Close();
  support::WaitForProgram(process_);
}

void GitRevision::ThrowBroken() const {
  throw support::Failure(ExitStatus::kTrouble,
                         "git does not read revision {}: is the working folder in a repository?",
                         revision_);
}

std::string GitRevision::Bytes(std::size_t count) {
  std::string bytes(count, '\0');
  for (std::size_t used = 0; used < count;) {
    const ssize_t read = ruxcomp::file::Uninterrupted(
        [&] { return ::read(answers_.number(), &bytes[used], count - used); });
    if (read <= 0) ThrowBroken();
    used += static_cast<std::size_t>(read);
  }
  return bytes;
}

std::string GitRevision::Line() {
  std::string line;
  for (char c = Bytes(1).front(); c != '\n'; c = Bytes(1).front()) line += c;
  return line;
}

std::optional<std::string> GitRevision::Read(const std::string& path) {
  if (path.empty()) {
    throw support::Failure(ExitStatus::kWrongUsage, "{}: names no file; expected REVISION:PATH",
                           revision_);
  }
  std::optional<Object> object = Ask(':' + path);
  return object && object->type == "blob" ? std::optional(std::move(object->bytes)) : std::nullopt;
}

bool GitRevision::HasFolder(const std::string& path) {
  const std::optional<Object> object = Ask(':' + path);
  return object && object->type == "tree";
}

// A tree of git is a list: "MODE NAME", a zero byte, and as many bytes as a hash has.
std::vector<std::string> GitRevision::FilesBelow(const std::string& folder) {
  constexpr std::string_view kFolderMode = "40000";
  std::vector<std::string> files;
  std::vector<std::string> folders = {folder == "." || folder == "./" ? "" : folder};
  while (!folders.empty()) {
    const std::filesystem::path current = std::move(folders.back());
    folders.pop_back();
    const std::optional<Object> tree = Ask(':' + current.string());
    if (!tree || tree->type != "tree") continue;
    for (std::string_view rest = tree->bytes; !rest.empty();) {
      const std::size_t blank = rest.find(' ');
      const std::size_t end = rest.find('\0', blank);
      const std::string path = (current / rest.substr(blank + 1, end - blank - 1)).string();
      (rest.substr(0, blank) == kFolderMode ? folders : files).push_back(path);
      rest.remove_prefix(std::min(end + 1 + tree->hash_size, rest.size()));
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::optional<GitRevision::Object> GitRevision::Ask(const std::string& what) {
  const std::string question = revision_ + what;
  // A line is a question, and git knows no way to quote what ends one.
  if (question.find('\n') != std::string::npos) return std::nullopt;
  const auto before = signal(SIGPIPE, SIG_IGN);
  const bool is_asked = support::WriteAll(questions_.number(), question + '\n');
  signal(SIGPIPE, before);
  if (!is_asked) ThrowBroken();
  const std::string answer = Line();
  // "HASH TYPE SIZE", or "TYPE SIZE" of a link that leads nowhere; of anything else, the last word
  // is not a number.
  const std::size_t last = answer.rfind(' ');
  std::size_t size = 0;
  const char* const end = answer.data() + answer.size();
  const bool has_size =
      last != std::string::npos && std::from_chars(answer.data() + last + 1, end, size).ptr == end;
  if (!has_size || last + 1 == answer.size()) return std::nullopt;
  if (size > compiled::kLargestFile) throw compiled::TooLarge("cannot load", question);
  std::string bytes = Bytes(size);
  Bytes(1);
  const std::size_t before_type = answer.rfind(' ', last - 1);  // npos: the type comes first
  const std::size_t hash_end = before_type == std::string::npos ? 0 : before_type;
  return Object{answer.substr(before_type + 1, last - before_type - 1), std::move(bytes),
                hash_end / 2};
}

std::string FolderInRepository() {
  const Descriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  support::Pipe answer = support::OpenPipe();
  const pid_t process =
      StartGit({"git", "rev-parse", "--show-prefix"}, nothing.number(), answer.write.number());
  answer.write.Close();
  std::string folder;
  support::ReadAll(answer.read.number(), compiled::kLargestFile, folder);
  if (support::WaitForProgram(process) != 0) {
    throw support::Failure(ExitStatus::kTrouble, "the working folder is not in a git repository");
  }
  if (!folder.empty() && folder.back() == '\n') folder.pop_back();
  return folder;
}

std::string PathInRepository(const std::string& folder, const std::string& path) {
  return (std::filesystem::path(folder) / path).lexically_normal().string();
}

}  // namespace rux::machine
