// A fixture for tests of what must hold for every model.
//
// RUX_MODELS      how many models each property is tried on (each test says how many by itself)
// RUX_FIRST_SEED  the seed of the first one; the others follow. A failure prints its seed: with
// that
//                 one and RUX_MODELS=1 it comes up again alone.
#ifndef TESTS_PROPERTIES_MODEL_TEST_H_
#define TESTS_PROPERTIES_MODEL_TEST_H_

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/generators/random_layout.h"
#include "tests/support/host.h"
#include "tests/support/own_process.h"
#include "tests/support/script_test.h"

// Every property is split into as many tests, to run side by side.
inline constexpr std::uint32_t kParts = 4;

// One part of the models of a property.
class ModelTest : public ScriptTest, public testing::WithParamInterface<std::uint32_t> {
 protected:
  // Calls body(seed), with an empty folder, for the seeds of this part until something fails.
  // Sanitizers slow down more than ten times what is mostly made of new processes.
#ifdef RUX_SANITIZED
  static constexpr std::uint32_t kSlowdown = 16;
#else
  static constexpr std::uint32_t kSlowdown = 1;
#endif
  template <class Body>
  void ForEachSeed(std::uint32_t models, Body body) {
    const std::uint32_t first = Setting("RUX_FIRST_SEED", 0);
    const std::uint32_t count = Setting("RUX_MODELS", models / kSlowdown);
    for (std::uint32_t i = GetParam(); i < count && !HasFailure(); i += kParts) {
      body(first + i);
      EmptyFolder();
    }
  }

  // Lays a model out in the folder of the test, or in one below it.
  SourceFiles WriteModel(Random& random, std::vector<RandomSection>& sections,
                         const std::string& folder = "") {
    const SourceFiles files = RandomLayout(random, sections);
    for (const auto& [path, contents] : files) Write(folder + path, contents);
    return files;
  }

  // Opens, reads and checks a script of the folder; returns all messages of that.
  Lines ParseAndCheck(const std::string& script, std::uint32_t valid) {
    EXPECT_NE(gccCompStart(script), 0u);
    gccParse();
    EXPECT_EQ(gccCheck(), valid);
    return host::TakeMessages();
  }

 private:
  static std::uint32_t Setting(const char* name, std::uint32_t otherwise) {
    const char* text = std::getenv(name);
    return text ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
  }
};

#endif  // TESTS_PROPERTIES_MODEL_TEST_H_
