// Names that were chosen to collide: the library compares about as many as it compares of others.
#include <cstddef>

#include "tests/support/colliding.h"
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {
std::size_t comparisons = 0;
}

#ifndef RUX_SANITIZED
// The library compares texts with this one, too.
extern "C" __attribute__((visibility("default"))) int memcmp(const void* one, const void* other,
                                                             std::size_t size) {
  ++comparisons;
  const auto* a = static_cast<const unsigned char*>(one);
  const auto* b = static_cast<const unsigned char*>(other);
  for (; size > 0; --size, ++a, ++b) {
    if (*a != *b) return *a - *b;
  }
  return 0;
}
#endif

namespace {

constexpr std::size_t kMany = 4096;

using Names = std::vector<std::string>;

// Repeats a text with each of the names in place of its "@".
std::string ForEach(const Names& names, const std::string& text) {
  const std::size_t at = text.find('@');
  std::string script;
  for (const std::string& name : names) script += text.substr(0, at) + name + text.substr(at + 1);
  return script;
}

class CollidingNamesTest : public ScriptTest {
 protected:
  void SetUp() override {
    ScriptTest::SetUp();
#ifdef RUX_SANITIZED
    GTEST_SKIP() << "sanitizers have a memcmp of their own";
#endif
    colliding_ = CollidingTexts(kMany);
    if (colliding_.empty()) GTEST_SKIP() << "std::hash is another one here";
  }
  void TearDown() override {
    gcUnInit();
    ScriptTest::TearDown();
  }

  // What checking such a script takes, then compiling, loading and finding a section by its name.
  std::size_t Comparisons(const Names& names, const std::string& head, const std::string& text,
                          std::uint32_t kind) {
    const std::string script = "[DEFINE]\nT0 = 0\n" + head + ForEach(names, text);
    comparisons = 0;
    Parse(script);
    EXPECT_EQ(CheckModel(), 1u);
    EXPECT_EQ(gccOutput(Path("board.meta")), 1u);
    gccCompEnd();
    EXPECT_EQ(gcInit(Path("board.meta")), 1u);
    EXPECT_NE(gcGetSectByName(kind, names.back()), nullptr);
    const std::size_t taken = comparisons;
    gcUnInit();
    return taken;
  }

  void ExpectInProportion(const std::string& head, const std::string& text, std::uint32_t kind) {
    const std::size_t control = Comparisons(DifferentTexts(kMany), head, text, kind);
    EXPECT_GT(control, kMany);  // they are counted
    EXPECT_LT(Comparisons(colliding_, head, text, kind), 2 * control);
  }

  Names colliding_;
};

TEST_F(CollidingNamesTest, OfProperties) {
  ExpectInProportion("[PROPERTY]\n", "@ = 1\n", RUX_SECT_PROPERTY);
}

TEST_F(CollidingNamesTest, OfDevices) {
  ExpectInProportion("", "[DEVICE]\nNAME = @\nID = T0\nINITFLAG = 0\nCONTROLMASK = 0\n",
                     RUX_SECT_DEVICE);
}

TEST_F(CollidingNamesTest, OfActionsAndGroups) {
  ExpectInProportion("", "[ACTION]\nNAME = @\n", RUX_SECT_ACTION);
  ExpectInProportion("", "[GROUP]\nPARENT = 0\nNAME = @\nCHILDGROUP = 0\n", RUX_SECT_GROUP);
}

TEST_F(CollidingNamesTest, OfGlobals) {
  ExpectInProportion("[GLOBAL]\n", "G_@ = T0\n", RUX_SECT_GLOBAL);
}

}  // namespace
