#include "reader/script_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

#include "reader/messages.h"
#include "ruxcomp/language/paths.h"

namespace reader {
namespace {

// Where the open files are chained, the innermost include first. A plain pointer needs no
// destructor that could run before a host closes its last file.
ScriptFile* g_open_files = nullptr;
std::size_t g_open_count = 0;

// What was opened since no file was open.
std::size_t g_opened_count = 0;
std::size_t g_opened_text = 0;

bool AreTooMany() {
  return g_open_count >= kMostOpen || g_opened_count >= kMostOpened || g_opened_text >= kMostText;
}

// How much is asked of a file that does not tell its size, at first.
constexpr std::size_t kFirstRead = std::size_t{1} << 16;

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }

 private:
  const int number_;
};

// Repeats a system call that a signal interrupted.
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

// The name under which there is a file, and what that file is.
std::optional<std::string> Locate(std::string path, struct stat* status) {
  if (stat(path.c_str(), status) == 0) return path;
  path = ruxcomp::language::WithSlashes(std::move(path));
  if (stat(path.c_str(), status) == 0) return path;
  return std::nullopt;
}

// The bytes of a file, but no more than one above `largest`. `size` is what the file says of
// itself: pipes and system files say 0. Directories open, but cannot be read.
std::optional<std::string> ReadFile(const std::string& path, std::size_t size,
                                    std::size_t largest) {
  const Descriptor file(
      Uninterrupted([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY); }));
  if (file.number() < 0) return std::nullopt;
  // One byte more than expected shows the end of the file without growing the text.
  std::string text(std::min(size > 0 ? size : kFirstRead, largest) + 1, '\0');
  std::size_t used = 0;
  while (used <= largest) {
    if (used == text.size()) text.resize(std::min(2 * used, largest + 1));
    const ssize_t count =
        Uninterrupted([&] { return read(file.number(), text.data() + used, text.size() - used); });
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    used += static_cast<std::size_t>(count);
  }
  text.resize(used);
  return text;
}

}  // namespace

std::unique_ptr<ScriptFile> ScriptFile::Open(const std::string& path, std::size_t largest) {
  // Looked at before it is opened: opening a named pipe that is being read already would wait for
  // another writer.
  struct stat status;
  const std::optional<std::string> located = Locate(path, &status);
  if (!located || IsOpen(status)) return nullptr;
  if (AreTooMany()) {
    Report(path, kTooManyOpen, 1);
    return nullptr;
  }
  const auto size = static_cast<std::size_t>(status.st_size);
  std::optional<std::string> text;
  bool too_large = size > largest;
  if (!too_large) {
    text = ReadFile(*located, size, largest);
    if (!text) return nullptr;
    too_large = text->size() > largest;
  }
  if (too_large) {
    Report(path, kTooLarge, 1);
    return nullptr;
  }
  return std::unique_ptr<ScriptFile>(new ScriptFile(path, status, std::move(*text)));
}

ScriptFile::ScriptFile(std::string path, const struct stat& status, std::string text)
    : path_(std::move(path)),
      device_(status.st_dev),
      inode_(status.st_ino),
      text_(std::move(text)),
      next_open_(std::exchange(g_open_files, this)) {
  ++g_open_count;
  ++g_opened_count;
  g_opened_text += text_.size();
}

ScriptFile::~ScriptFile() {
  ScriptFile** link = &g_open_files;
  while (*link != this) link = &(*link)->next_open_;
  *link = next_open_;
  if (--g_open_count == 0) g_opened_count = g_opened_text = 0;
}

bool ScriptFile::IsOpen(const struct stat& status) {
  for (const ScriptFile* file = g_open_files; file != nullptr; file = file->next_open_) {
    if (file->device_ == status.st_dev && file->inode_ == status.st_ino) return true;
  }
  return false;
}

void ScriptFile::Parse() {
  if (script_ != nullptr) return;
  script_ = std::make_unique<const Script>(
      std::move(text_),
      [this](const char* message, std::uint32_t line) { Report(path_, message, line); });
}

}  // namespace reader
