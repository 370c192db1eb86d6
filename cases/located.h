// What is wrong with a test, with the place in its file.
#ifndef CASES_LOCATED_H_
#define CASES_LOCATED_H_

#include <cstdint>
#include <string>

#include "support/failure.h"

namespace rux::cases {

[[noreturn]] inline void RefuseAt(const std::string& path, std::uint32_t line,
                                  const std::string& text) {
  throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: {}", path, line, text);
}

// Returns what use() does; a Failure of it becomes one of that place.
template <class Use>
auto Located(const std::string& path, std::uint32_t line, Use use) {
  try {
    return use();
  } catch (const support::Failure& failure) {
    RefuseAt(path, line, failure.what());
  }
}

}  // namespace rux::cases

#endif  // CASES_LOCATED_H_
