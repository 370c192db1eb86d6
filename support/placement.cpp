#include "support/placement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/descriptor.h"
#include "support/file_target.h"
#include "support/signals.h"

namespace rux::support {
namespace {

namespace fs = std::filesystem;

// A name in the folder that nothing had before make(name) answered true; empty, with the reason in
// errno, when none could be made.
template <class Make>
std::string MakeUnderNewName(const fs::path& folder, Make make) {
  constexpr int kMostTries = 1000;  // names that killed processes of this number may have left
  for (int i = 0; i < kMostTries; ++i) {
    const fs::path name = folder / (".rux-" + std::to_string(getpid()) + '-' + std::to_string(i));
    if (make(name.c_str())) return name.string();
    if (errno != EEXIST) break;
  }
  return {};
}

// One file on its way to its place. Unless Settle() is reached, it goes and what stood there before
// is there again.
class Placement {
 public:
  Placement(const FileTarget& target, std::string_view bytes) : target_(target) {
    try {
      Create();
      Write(bytes);
    } catch (...) {
      Remove(temporary_);
      throw;
    }
  }
  ~Placement() {
    if (placed_) TakeBack();
    Remove(temporary_);
    Remove(older_);
  }
  Placement(const Placement&) = delete;
  Placement& operator=(const Placement&) = delete;

  void Place(bool keeps_older) {
    if (keeps_older) KeepOlder();
    Rename();
    placed_ = true;
  }

  // From here on there is no way back.
  void Settle() { placed_ = false; }

 private:
  static void Remove(const std::string& name) {
    if (!name.empty()) unlink(name.c_str());
  }

  fs::path Folder() const {
    const fs::path folder = fs::path(target_.place).parent_path();
    return folder.empty() ? "." : folder;
  }

  // A file without a name where the file system has them: it goes by itself when the process does.
  void Create() {
    constexpr mode_t kModeOfNewFiles = 0666;
    file_ = Descriptor(open(Folder().c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, kModeOfNewFiles));
    if (file_.is_open()) return;
    temporary_ = MakeUnderNewName(Folder(), [&](const char* name) {
      file_ = Descriptor(open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kModeOfNewFiles));
      return file_.is_open();
    });
    if (!file_.is_open()) throw target_.CannotWrite();
  }

  void Write(std::string_view bytes) {
    if (!WriteAll(file_.number(), bytes)) throw target_.CannotWrite();
    if (target_.mode && fchmod(file_.number(), *target_.mode) != 0) throw target_.CannotWrite();
    // Before the file gets its name: otherwise, after a loss of power, the name may stand for a
    // file whose bytes never got to the disk, and the older one is gone. That the new name gets
    // there is not waited for: until it does, the older file is there, whole. Some file systems
    // have nothing to synchronize.
    if (fsync(file_.number()) != 0 && errno != EINVAL) throw target_.CannotWrite();
  }

  void NameTemporary() {
    const std::string nameless = "/proc/self/fd/" + std::to_string(file_.number());
    temporary_ = MakeUnderNewName(Folder(), [&](const char* name) {
      return linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    });
    if (temporary_.empty()) throw target_.CannotWrite();
  }

  void Rename() {
    if (temporary_.empty()) NameTemporary();
    if (std::rename(temporary_.c_str(), target_.place.c_str()) != 0) throw target_.CannotWrite();
    temporary_.clear();
  }

  // Without hard links there is no way back, which is no reason not to go on.
  void KeepOlder() {
    if (!target_.mode) return;
    older_ = MakeUnderNewName(
        Folder(), [&](const char* name) { return link(target_.place.c_str(), name) == 0; });
  }

  void TakeBack() {
    if (!target_.mode) {
      unlink(target_.place.c_str());
    } else if (!older_.empty() && std::rename(older_.c_str(), target_.place.c_str()) == 0) {
      older_.clear();
    }
  }

  const FileTarget& target_;
  Descriptor file_;
  std::string temporary_;  // its name while it has one that is not the wanted one
  std::string older_;      // the name that keeps what was there before
  bool placed_ = false;    // and not settled
};

void WriteInto(const FileTarget& target, std::string_view bytes) {
  Descriptor file(open(target.path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NOCTTY));
  if (!file.is_open() || !WriteAll(file.number(), bytes) || !file.Close()) {
    throw target.CannotWrite();
  }
}

}  // namespace

void PutInPlace(const std::vector<NewFile>& files) {
  std::vector<FileTarget> targets;
  targets.reserve(files.size());
  for (const NewFile& file : files) targets.emplace_back(file.path);
  // The other end of a pipe may keep this waiting for ever, so signals are not held yet.
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (!targets[i].is_file) WriteInto(targets[i], files[i].bytes);
  }
  const SignalsHeld held;
  std::deque<Placement> placements;
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (targets[i].is_file) placements.emplace_back(targets[i], files[i].bytes);
  }
  // Nothing can fail behind the last one, so there will be no way back to go.
  for (Placement& placement : placements) placement.Place(&placement != &placements.back());
  for (Placement& placement : placements) placement.Settle();
}

}  // namespace rux::support
