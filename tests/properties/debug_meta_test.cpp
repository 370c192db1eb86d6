// A debug meta file is read in another process as what it was written from, and means the script.
#include <sstream>

#include "decompile/decompile.h"
#include "tests/properties/model_test.h"
#include "tests/support/bytes.h"
#include "tests/tool/decompile/model_compare.h"

namespace {

// All that the debug queries answer about the loaded model. INCLUDE sections are left out: no
// file gives them back.
std::string DebugAnswers() {
  constexpr std::uint32_t kKinds = 13;
  const auto or_dash = [](const char* text) { return text ? text : "-"; };
  std::ostringstream answers;
  for (std::uint32_t kind = 1; kind <= kKinds; ++kind) {
    for (std::uint32_t i = 0; const GDSECTION section = gdGetSectByIndex(kind, i); ++i) {
      answers << kind << ' ' << or_dash(gdGetSectName(section)) << ' '
              << or_dash(gdGetSectPName(section)) << ' ' << gdGetSectID(section) << '\n';
      for (std::uint32_t j = 0; const GDENTRY entry = gdGetEntryByIndex(section, j); ++j) {
        answers << gdGetEntryName(entry) << " = " << gdGetValue(entry) << '\n';
      }
    }
  }
  return answers.str();
}

std::string WithoutTime(std::string file) { return file.replace(20, 4, 4, '\0'); }

rux::compiled::DebugMeta Decoded(const std::string& file) {
  rux::compiled::Faults faults;
  rux::compiled::DebugMeta meta = rux::compiled::DecodeDebugMeta(file, faults);
  EXPECT_TRUE(faults.empty()) << rux::compiled::FaultText(faults.list().front());
  return meta;
}

bool IsInclude(const std::vector<rux::compiled::DebugSection>& kind) {
  return !kind.empty() && kind.front().name == "INCLUDE";
}

// What of a file another process writes again: all kinds but INCLUDE.
std::string WithoutIncludes(const std::string& file) {
  const rux::compiled::DebugMeta meta = Decoded(file);
  std::string left = file;
  for (std::size_t i = 0; i < meta.kinds.size(); ++i) {
    if (!IsInclude(meta.kinds[i])) continue;
    const std::size_t begin = meta.section_counts[i].offset;
    const std::size_t end =
        i + 1 < meta.kinds.size() ? meta.section_counts[i + 1].offset : file.size();
    left.erase(begin, end - begin);
    const auto kinds = static_cast<std::uint32_t>(meta.kinds.size() - 1);
    left.replace(meta.kind_count.offset, 4, ByteString().Words({kinds}).str());
  }
  return left;
}

std::string Decompiled(const rux::compiled::DebugMeta& meta) {
  return rux::decompile::ScriptText(rux::decompile::ScriptSectionsOf(meta));
}

class DebugMeta : public ModelTest {
 protected:
  // In a process of its own: compiles a script to "NAME.meta" and "NAME.metad", and keeps the
  // answers of the debug queries in "NAME.answers".
  void Compile(const std::string& script, const std::string& name) {
    InOwnProcess([&] {
      ParseAndCheck(ScriptPath(script), 1);
      EXPECT_EQ(gccOutput(Path(name + ".meta")), 1u);
      EXPECT_EQ(gccOutputD(Path(name + ".metad")), 1u);
      Write(name + ".answers", DebugAnswers());
    });
  }

  // The same for a debug meta file instead of a script.
  void Load(const std::string& debug_meta, const std::string& name) {
    InOwnProcess([&] {
      ASSERT_EQ(gdInit(Path(debug_meta)), 1u);
      EXPECT_EQ(host::TakeMessages(), Lines{});
      EXPECT_EQ(gccOutputD(Path(name + ".metad")), 1u);
      Write(name + ".answers", DebugAnswers());
    });
  }

  void ExpectRaise(const std::string& debug_meta) {
    InOwnProcess([&] {
      std::string what;
      try {
        gdInit(Path(debug_meta));
      } catch (const std::out_of_range& error) {
        what = error.what();
      }
      EXPECT_EQ(what, "vector");
    });
  }
};

// Of a file whose first kind is INCLUDE, the list of source files is lost, and with it the file.
TEST_P(DebugMeta, IsWrittenAgainAsItWasButForIncludes) {
  ForEachSeed(600, [&](std::uint32_t seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    const SourceFiles files = WriteModel(random, sections);
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + TextOf(files));
    Compile("board.rux", "first");
    const std::string first = WithoutTime(ReadAll("first.metad"));
    if (IsInclude(Decoded(first).kinds.front())) {
      ExpectRaise("first.metad");
      return;
    }
    Load("first.metad", "second");
    EXPECT_TRUE(SameBytes(WithoutTime(ReadAll("second.metad")), WithoutIncludes(first)));
    EXPECT_EQ(ReadAll("second.answers"), ReadAll("first.answers"));
  });
}

TEST_P(DebugMeta, DecompiledCompilesToTheSame) {
  ForEachSeed(800, [&](std::uint32_t seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    const SourceFiles files = WriteModel(random, sections);
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + TextOf(files));
    Compile("board.rux", "first");
    const rux::compiled::DebugMeta first = Decoded(ReadAll("first.metad"));
    const std::string script = Decompiled(first);
    Write("again.rux", script);
    Compile("again.rux", "second");
    const rux::compiled::DebugMeta second = Decoded(ReadAll("second.metad"));
    EXPECT_TRUE(SameBytes(WithoutTime(ReadAll("second.meta")), WithoutTime(ReadAll("first.meta"))));
    EXPECT_EQ(DifferenceOf(first, second), "");
    EXPECT_EQ(Decompiled(second), script);
  });
}

INSTANTIATE_TEST_SUITE_P(Models, DebugMeta, testing::Range(0u, kParts));

}  // namespace
