// System calls that a signal may interrupt.
#ifndef RUXCOMP_FILE_UNINTERRUPTED_H_
#define RUXCOMP_FILE_UNINTERRUPTED_H_

#include <cerrno>

namespace ruxcomp::file {

// Makes a system call, and makes it again while a signal interrupts it. The call answers a negative
// number, with the reason in errno, when it fails.
template <class Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_UNINTERRUPTED_H_
