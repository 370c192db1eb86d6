// What this process holds of the system.
#ifndef TESTS_DAMAGE_USAGE_H_
#define TESTS_DAMAGE_USAGE_H_

#include <cstddef>

struct Usage {
  std::size_t files = 0;  // open descriptors
  std::size_t heap = 0;   // bytes that were allocated and not freed
  std::size_t pages = 0;  // of the address space
};

Usage CurrentUsage();

// Whether memory was lost that nothing points to any more; the sanitizer prints which to standard
// error. Without AddressSanitizer the answer is always no.
bool FoundLeaks();

// While it lives, what is allocated may be lost.
class LeaksAllowed {
 public:
  LeaksAllowed();
  ~LeaksAllowed();
  LeaksAllowed(const LeaksAllowed&) = delete;
  LeaksAllowed& operator=(const LeaksAllowed&) = delete;
};

#endif  // TESTS_DAMAGE_USAGE_H_
