// Loaded before everything else, this makes a check crash or hang while its folder holds a file of
// that name; one that hangs makes a file "hanging". Only checks change the working folder. While
// the server's folder holds a file "refuse", no process is started.
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) pid_t fork() noexcept {
  if (access("refuse", F_OK) == 0) {
    errno = EAGAIN;
    return -1;
  }
  return reinterpret_cast<pid_t (*)()>(dlsym(RTLD_NEXT, "fork"))();
}

extern "C" __attribute__((visibility("default"))) int chdir(const char* path) noexcept {
  const long result = syscall(SYS_chdir, path);
  if (access("crash", F_OK) == 0) raise(SIGSEGV);
  while (access("hang", F_OK) == 0) {
    close(creat("hanging", 0600));
    pause();
  }
  return static_cast<int>(result);
}
