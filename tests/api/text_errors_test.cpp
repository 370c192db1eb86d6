// The texts of the errors that too short texts raise.
#include <stdexcept>

#include "tests/api/meta_bytes.h"

namespace {

class TextErrorsTest : public MetaTest {
 protected:
  template <class Step>
  static std::string Raised(Step step) {
    try {
      step();
    } catch (const std::out_of_range& error) {
      return error.what();
    }
    return "nothing";
  }

  void Start(const std::string& text) {
    Write("board.rux", text);
    ASSERT_EQ(gccCompStart(ScriptPath("board.rux")), 1u);
  }
};

TEST_F(TextErrorsTest, ADefinitionWithoutADigit) {
  for (const char* text : {"0x", "0X", "\"\""}) {
    SCOPED_TRACE(text);
    Start("[DEFINE]\nW = " + std::string(text) + "\n");
    EXPECT_EQ(Raised([] { gccParse(); }), "basic_string::at");
    gccCompEnd();
  }
}

TEST_F(TextErrorsTest, AnOperandWithoutADigit) {
  for (const char* text : {"", "0x", "ARG0x"}) {
    SCOPED_TRACE(text);
    Parse("[DEFINE]\nT1 = 1\n[GLOBAL]\nG_A = T1," + std::string(text) + "\n");
    EXPECT_EQ(Raised([] { gccCheck(); }), "basic_string::at");
    gccCompEnd();
  }
}

// The checks refuse such a name; whoever writes the model all the same gets there.
TEST_F(TextErrorsTest, ANameShorterThanItsPrefix) {
  for (const char* section : {"[SYSTEM]\nX = 1\n", "[GLOBAL]\nG = 1\n"}) {
    SCOPED_TRACE(section);
    Parse(section);
    EXPECT_EQ(CheckModel(), 0u);
    EXPECT_EQ(Raised([this] { gccOutput(Path("board.meta")); }), "basic_string::substr");
    gccCompEnd();
  }
}

}  // namespace
