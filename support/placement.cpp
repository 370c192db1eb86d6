#include "support/placement.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "support/descriptor.h"
#include "support/failure.h"
#include "support/file_target.h"
#include "support/signals.h"
#include "support/temporary_name.h"

namespace rux::support {
namespace {

namespace fs = std::filesystem;

// One file on its way to its place. Unless Settle() is reached, it goes and what was there before
// is there again.
class Placement {
 public:
  Placement(const FileTarget& target, std::string_view bytes) : target_(target) {
    Create();
    Write(bytes);
  }
  ~Placement() {
    if (placed_) TakeBack();
  }
  Placement(const Placement&) = delete;
  Placement& operator=(const Placement&) = delete;

  void Place(bool keeps_older) {
    if (keeps_older) KeepOlder();
    if (!temporary_.is_there()) NameTemporary();
    if (!temporary_.RenameTo(target_.place)) throw target_.CannotWrite();
    placed_ = true;
  }

  // From here on there is no way back.
  void Settle() { placed_ = false; }

 private:
  std::string Folder() const {
    const fs::path folder = fs::path(target_.place).parent_path();
    return folder.empty() ? "." : folder.string();
  }

  // A file without a name where the system has them and lets them be named later: it goes by itself
  // when the process does. What replaces another file is open to its owner only until it has the
  // same rights.
  void Create() {
    const mode_t mode = target_.rights ? 0600 : 0666;
    file_ = Descriptor(open(Folder().c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
    if (file_.is_open() && !PathOf(file_).empty()) return;
    temporary_ = TemporaryName(Folder(), [&](const char* name) {
      file_ = Descriptor(open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
      return file_.is_open();
    });
    if (!file_.is_open()) throw target_.CannotWrite();
  }

  void Write(std::string_view bytes) {
    if (target_.rights && !target_.rights->GiveTo(file_.number())) throw target_.CannotWrite();
    if (!WriteAll(file_.number(), bytes)) throw target_.CannotWrite();
    // Before the file gets its name: otherwise, after a loss of power, the name may stand for a
    // file whose bytes never got to the disk, and the older one is gone. That the new name gets
    // there is not waited for: until it does, the older file is there, whole. Some file systems
    // have nothing to synchronize.
    if (fsync(file_.number()) != 0 && errno != EINVAL) throw target_.CannotWrite();
  }

  void NameTemporary() {
    const std::string nameless = PathOf(file_);
    temporary_ = TemporaryName(Folder(), [&](const char* name) {
      return linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    });
    if (!temporary_.is_there()) throw target_.CannotWrite();
  }

  // Without hard links there is no way back, which is no reason not to go on.
  void KeepOlder() {
    if (!target_.rights) return;
    older_ = TemporaryName(
        Folder(), [&](const char* name) { return link(target_.place.c_str(), name) == 0; });
  }

  void TakeBack() {
    if (!target_.rights) {
      unlink(target_.place.c_str());
    } else if (older_.is_there()) {
      older_.RenameTo(target_.place);
    }
  }

  const FileTarget& target_;
  Descriptor file_;
  TemporaryName temporary_;  // of the file while it has no other name
  TemporaryName older_;      // of what was there before
  bool placed_ = false;      // and not settled
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
  // Nothing can fail after the last one, so it needs no way back.
  for (Placement& placement : placements) placement.Place(&placement != &placements.back());
  for (Placement& placement : placements) placement.Settle();
}

void MakeFolderOf(const std::string& file) {
  const fs::path folder = fs::path(file).parent_path();
  std::error_code error;
  if (!folder.empty()) fs::create_directories(folder, error);
  if (error) throw SystemFailure("cannot create", folder.string(), error.value());
}

}  // namespace rux::support
