#include "tests/tool/faults/supervised_run.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

struct Row {
  long number;
  Call call;
};

// Not every machine has all of them.
constexpr Row kCalls[] = {
#ifdef SYS_open
    {SYS_open, Call::kOpen},
#endif
#ifdef SYS_access
    {SYS_access, Call::kAccess},
#endif
#ifdef SYS_link
    {SYS_link, Call::kLink},
#endif
#ifdef SYS_unlink
    {SYS_unlink, Call::kUnlink},
#endif
#ifdef SYS_rename
    {SYS_rename, Call::kRename},
#endif
#ifdef SYS_renameat
    {SYS_renameat, Call::kRename},
#endif
#ifdef SYS_readlink
    {SYS_readlink, Call::kReadLink},
#endif
#ifdef SYS_stat
    {SYS_stat, Call::kStatus},
#endif
#ifdef SYS_lstat
    {SYS_lstat, Call::kStatus},
#endif
#ifdef SYS_newfstatat
    {SYS_newfstatat, Call::kStatus},
#endif
    {SYS_openat, Call::kOpen},         {SYS_faccessat, Call::kAccess},
    {SYS_faccessat2, Call::kAccess},   {SYS_linkat, Call::kLink},
    {SYS_unlinkat, Call::kUnlink},     {SYS_renameat2, Call::kRename},
    {SYS_readlinkat, Call::kReadLink}, {SYS_fstat, Call::kStatus},
    {SYS_statx, Call::kStatus},        {SYS_read, Call::kRead},
    {SYS_readv, Call::kRead},          {SYS_write, Call::kWrite},
    {SYS_writev, Call::kWrite},        {SYS_lseek, Call::kSeek},
    {SYS_close, Call::kClose},         {SYS_fsync, Call::kSynchronize},
    {SYS_fchmod, Call::kChangeMode},   {SYS_memfd_create, Call::kMakeMemoryFile},
    {SYS_mmap, Call::kMemory},         {SYS_brk, Call::kMemory},
};

// main() begins with a look at the standard descriptors.
constexpr long kFirstOfMain = SYS_fcntl;

std::vector<sock_filter> Filter(Supervised supervised) {
  std::vector<long> numbers = {kFirstOfMain};
  for (const Row& row : kCalls) {
    const bool is_for_memory = row.call == Call::kMemory;
    if (is_for_memory == (supervised == Supervised::kMemory)) numbers.push_back(row.number);
  }
  std::vector<sock_filter> filter = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  for (std::size_t left = numbers.size(); left > 0; --left) {
    const auto number = static_cast<std::uint32_t>(numbers[numbers.size() - left]);
    filter.push_back(
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, static_cast<std::uint8_t>(left), 0));
  }
  filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
  return filter;
}

// From here on, the calls of this process wait for whoever has the answered descriptor.
int SuperviseMe(Supervised supervised) {
  std::vector<sock_filter> filter = Filter(supervised);
  const sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return -1;
  return static_cast<int>(
      syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));
}

// A message of one byte that carries a descriptor.
struct DescriptorMessage {
  DescriptorMessage() {
    header.msg_iov = &piece;
    header.msg_iovlen = 1;
    header.msg_control = control;
    header.msg_controllen = sizeof control;
  }

  char byte = 0;
  iovec piece = {&byte, 1};
  alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
  msghdr header = {};
};

void SendDescriptor(int socket, int descriptor) {
  DescriptorMessage message;
  cmsghdr* carried = CMSG_FIRSTHDR(&message.header);
  carried->cmsg_level = SOL_SOCKET;
  carried->cmsg_type = SCM_RIGHTS;
  carried->cmsg_len = CMSG_LEN(sizeof descriptor);
  std::memcpy(CMSG_DATA(carried), &descriptor, sizeof descriptor);
  sendmsg(socket, &message.header, 0);
}

// -1: none came.
int ReceiveDescriptor(int socket) {
  DescriptorMessage message;
  if (recvmsg(socket, &message.header, MSG_CMSG_CLOEXEC) != 1) return -1;
  const cmsghdr* carried = CMSG_FIRSTHDR(&message.header);
  if (carried == nullptr) return -1;
  int descriptor = -1;
  std::memcpy(&descriptor, CMSG_DATA(carried), sizeof descriptor);
  return descriptor;
}

// Answers every call until the process has ended.
class Supervision {
 public:
  Supervision(int listener, const Supervisor& supervisor)
      : listener_(listener), supervisor_(supervisor) {}

  void Run() {
    pollfd ready = {listener_, POLLIN, 0};
    while (poll(&ready, 1, -1) > 0 && (ready.revents & POLLIN) != 0) {
      seccomp_notif notice = {};
      // Fails when a signal ends the process while it waits.
      if (ioctl(listener_, SECCOMP_IOCTL_NOTIF_RECV, &notice) != 0) continue;
      seccomp_notif_resp answer = {};
      answer.id = notice.id;
      answer.error = -Decide(notice);
      if (answer.error == 0) answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
      // This one does not answer errors but an end of the memory other than the wanted one.
      if (notice.data.nr == SYS_brk) answer.error = 0;
      ioctl(listener_, SECCOMP_IOCTL_NOTIF_SEND, &answer);
    }
  }

 private:
  int Decide(const seccomp_notif& notice) {
    const seccomp_data& data = notice.data;
    in_main_ |= data.nr == kFirstOfMain && data.args[0] == STDIN_FILENO && data.args[1] == F_GETFD;
    const Row* row = std::find_if(std::begin(kCalls), std::end(kCalls),
                                  [&](const Row& known) { return known.number == data.nr; });
    if (!in_main_ || row == std::end(kCalls)) return 0;
    CallMade made = {row->call, count_++, {}};
    std::copy(std::begin(data.args), std::end(data.args), made.arguments);
    return supervisor_(made, static_cast<pid_t>(notice.pid));
  }

  const int listener_;
  const Supervisor& supervisor_;
  bool in_main_ = false;
  std::size_t count_ = 0;
};

}  // namespace

const char* NameOf(Call call) {
  constexpr const char* kCallNames[] = {"access", "chmod", "close", "link",     "memfd_create",
                                        "memory", "open",  "read",  "readlink", "rename",
                                        "seek",   "stat",  "fsync", "unlink",   "write"};
  return kCallNames[static_cast<std::size_t>(call)];
}

std::optional<Ended> RunSupervised(const std::filesystem::path& folder, const Arguments& arguments,
                                   const Supervisor& supervisor, Supervised supervised) {
  int sockets[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) return std::nullopt;
  RuxProcess process(folder, arguments, [&] {
    const int listener = SuperviseMe(supervised);
    if (listener < 0) _exit(126);
    SendDescriptor(sockets[1], listener);
    close(listener);
  });
  close(sockets[1]);
  const int listener = ReceiveDescriptor(sockets[0]);
  close(sockets[0]);
  if (listener >= 0) {
    Supervision(listener, supervisor).Run();
    close(listener);
  }
  const Ended ended = process.Wait();
  return listener >= 0 ? std::optional<Ended>(ended) : std::nullopt;
}

const char* WhyNotSupervised() {
#ifdef RUX_SANITIZED
  return "a sanitizer makes system calls of its own, which are not to fail";
#else
  const bool can = RunSupervised("/", {"--version"}, [](auto&, auto) { return 0; }).has_value();
  return can ? nullptr : "the system does not let a process supervise another one";
#endif
}
