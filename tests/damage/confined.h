// Trying something out in a process that cannot do harm.
#ifndef TESTS_DAMAGE_CONFINED_H_
#define TESTS_DAMAGE_CONFINED_H_

#include <cstddef>
#include <functional>
#include <optional>

// What `body`, which answers 0 to 100, answers in a process of its own. Nothing when it does not
// come to an end: by a signal, an error that it lets through, more memory than this process has
// plus `memory` (not held against it under AddressSanitizer), or computing without end.
std::optional<int> Confined(std::size_t memory, const std::function<int()>& body);

#endif  // TESTS_DAMAGE_CONFINED_H_
