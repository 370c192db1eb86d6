// How much stack compiling takes where it takes most: of scripts that include one another.
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <functional>

#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

constexpr std::size_t kDeepest = 1000;                 // scripts that may include one another
constexpr std::size_t kStated = std::size_t{1} << 20;  // what docs/hosts.md says suffices

using StackTest = ScriptTest;

// How many bytes of its stack a thread has touched.
std::size_t StackTaken(std::size_t size, const std::function<void()>& body) {
  void* const stack =
      mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  EXPECT_NE(stack, MAP_FAILED);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  EXPECT_EQ(pthread_attr_setstack(&attributes, stack, size), 0);
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    (*static_cast<const std::function<void()>*>(argument))();
    return nullptr;
  };
  EXPECT_EQ(pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&body)),
            0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  // It grows downwards, over zeros.
  const auto* const begin = static_cast<const char*>(stack);
  const auto* const touched = std::find_if(begin, begin + size, [](char c) { return c != 0; });
  const auto taken = static_cast<std::size_t>(begin + size - touched);
  munmap(stack, size);
  return taken;
}

TEST_F(StackTest, AChainOfIncludesTakesLessThanIsStated) {
#ifdef RUX_SANITIZED
  GTEST_SKIP() << "sanitizers take stack of their own";
#endif
  const auto name = [](std::size_t i) { return "s" + std::to_string(i) + ".rux"; };
  for (std::size_t i = 1; i < kDeepest; ++i)
    Write(name(i), "[INCLUDE]\nFILE = " + name(i + 1) + "\n");
  Write(name(kDeepest), "[DEFINE]\nDEEPEST = 1\n");
  const std::size_t taken = StackTaken(8 * kStated, [&] {
    gccCompStart(ScriptPath(name(1)));
    gccParse();
    gccCheck();
  });
  RecordProperty("bytes", std::to_string(taken));
  EXPECT_EQ(host::TakeMessages(), Lines(kDeepest, "Parse::No more sections(total = 1).\n"));
  EXPECT_GT(taken, kDeepest * 100);  // it was measured
  EXPECT_LT(taken, kStated);
}

}  // namespace
