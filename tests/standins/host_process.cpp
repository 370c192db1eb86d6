#include "tests/standins/host_process.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

// The right to mount: as the system's root, or as the root of a user namespace of one's own.
bool EnterMountNamespace() {
  const auto write = [](const char* path, const std::string& text) {
    std::ofstream file(path);
    file << text;
    return static_cast<bool>(file.flush());
  };
  if (unshare(CLONE_NEWNS) == 0) return true;
  const std::string user = std::to_string(geteuid());
  const std::string group = std::to_string(getegid());
  return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && write("/proc/self/setgroups", "deny") &&
         write("/proc/self/uid_map", "0 " + user + " 1") &&
         write("/proc/self/gid_map", "0 " + group + " 1");
}

}  // namespace

std::optional<std::string> RunHost(const std::string& name, const std::string& script,
                                   const std::function<bool()>& prepare) {
  constexpr int kNotPrepared = 126;
  int ends[2];
  if (pipe(ends) != 0) return std::nullopt;
  const pid_t child = fork();
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    const std::string host = RUX_STANDINS "/" + name;
    if (!prepare()) _exit(kNotPrepared);
    execl(host.c_str(), host.c_str(), script.c_str(), nullptr);
    _exit(127);
  }
  close(ends[1]);
  std::string printed;
  char buffer[512];
  for (ssize_t size; (size = read(ends[0], buffer, sizeof buffer)) > 0;) {
    printed.append(buffer, static_cast<std::size_t>(size));
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == kNotPrepared) return std::nullopt;
  return printed;
}

bool PutPluginAtItsFixedPath(const std::string& scratch) {
  if (!EnterMountNamespace()) return false;
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  if (mount("tmpfs", scratch.c_str(), "tmpfs", 0, nullptr) != 0) return false;
  const std::string upper = scratch + "/upper";
  const std::string work = scratch + "/work";
  const std::string layers = "lowerdir=/usr,upperdir=" + upper + ",workdir=" + work;
  std::error_code error;
  fs::create_directory(upper, error);
  fs::create_directory(work, error);
  if (mount("overlay", "/usr", "overlay", 0, layers.c_str()) != 0) return false;
  fs::create_directories(fs::path(kFixedPath).parent_path(), error);
  return fs::copy_file(RUX_BUILT_PLUGIN, kFixedPath, fs::copy_options::overwrite_existing, error);
}
