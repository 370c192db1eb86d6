// The plug-in's operations as the library wraps them.
#include <dlfcn.h>

#include "frontend/parse.h"
#include "tests/unit/model_test.h"

using namespace ruxcomp::core;

namespace {

// A plug-in of tests/standins/plugin.cpp: whatever it opens has the sections GLOBAL (line 3, items
// "G_A = x" in line 4 and "B =" in line 5), FOO (line 6) and PROPERTY (line 8).
std::string StandIn(const std::string& name) { return RUX_STANDINS "/" + name + ".so"; }

class WrappersTest : public ModelTest {
 protected:
  // Opens a script with that plug-in.
  CRUXParse& With(const std::string& standIn) {
    host::SetPlugin(StandIn(standIn));
    parse_ = std::make_unique<CRUXParse>();
    file = parse_->RSOpenFile("script");
    return *parse_;
  }

  void* file = nullptr;
  std::string name = "kept";
  std::string value = "kept";
  std::uint32_t line = 77;

 private:
  std::unique_ptr<CRUXParse> parse_;
};

TEST_F(WrappersTest, PassOnWhatThePluginAnswers) {
  CRUXParse& parse = With("complete");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(parse.RSParse(file), 0u);
  EXPECT_EQ(parse.RSEnumSection(file, 3), nullptr);
  void* section = parse.RSEnumSection(file, 0);
  ASSERT_NE(section, nullptr);
  EXPECT_NE(parse.RSGetSectInfo(section, name, line), 0u);
  EXPECT_EQ(name, "GLOBAL");
  EXPECT_EQ(line, 3u);
  EXPECT_NE(parse.RSEnumItem(section, 0, name, value, line), 0u);
  EXPECT_EQ(name, "G_A");
  EXPECT_EQ(value, "x");
  EXPECT_EQ(line, 4u);
  EXPECT_NE(parse.RSEnumItem(section, 1, name, value, line), 0u);
  EXPECT_EQ(name, "B");
  EXPECT_EQ(value, "");
  EXPECT_EQ(parse.RSEnumItem(section, 2, name, value, line), 0u);
}

TEST_F(WrappersTest, RSFindSectionAsksForASectionByItsName) {
  CRUXParse& parse = With("complete");
  EXPECT_EQ(parse.RSFindSection(file, "PROPERTY"), parse.RSEnumSection(file, 2));
  EXPECT_EQ(parse.RSFindSection(file, "property"), nullptr);
}

TEST_F(WrappersTest, RSFindSectionHandsOverAZeroBehindTheName) {
  CRUXParse& parse = With("complete");
  parse.RSFindSection(file, "PROPERTY");
  void* plugin = dlopen(StandIn("complete").c_str(), RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(plugin, nullptr) << dlerror();
  Texts calls;
  reinterpret_cast<void (*)(Texts*)>(dlsym(plugin, "TakeCalls"))(&calls);
  EXPECT_EQ(calls, (Texts{"RSOpenFile(script)", "RSFindSEction(file, PROPERTY, 0)"}));
  dlclose(plugin);
}

TEST_F(WrappersTest, FindWhatTheProcessExportsAtEveryCall) {
  host::SetPlugin("");
  CRUXParse parse;
  EXPECT_EQ(parse.Start("script"), 0u);
  void* reader = dlopen(StandIn("complete").c_str(), RTLD_NOW | RTLD_GLOBAL);
  ASSERT_NE(reader, nullptr) << dlerror();
  EXPECT_NE(parse.RSOpenFile("script"), nullptr);
  dlclose(reader);
}

TEST_F(WrappersTest, RSCloseFileHandsOverTheHandleVariable) {
  CRUXParse& parse = With("complete");
  EXPECT_EQ(parse.RSCloseFile(file), 7u);
  EXPECT_EQ(file, nullptr);
}

TEST_F(WrappersTest, WithoutRSOpenFile) {
  EXPECT_EQ(With("without_RSOpenFile").RSOpenFile("script"), nullptr);
  EXPECT_EQ(With("without_RSOpenFile").Start("script"), 0u);
}

TEST_F(WrappersTest, WithoutRSParse) { EXPECT_EQ(With("without_RSParse").RSParse(file), 0u); }

TEST_F(WrappersTest, WithoutRSEnumSection) {
  EXPECT_EQ(With("without_RSEnumSection").RSEnumSection(file, 0), nullptr);
}

TEST_F(WrappersTest, WithoutRSGetSectInfo) {
  CRUXParse& parse = With("without_RSGetSectInfo");
  EXPECT_EQ(parse.RSGetSectInfo(parse.RSEnumSection(file, 0), name, line), 0u);
}

TEST_F(WrappersTest, WithoutRSEnumItem) {
  CRUXParse& parse = With("without_RSEnumItem");
  EXPECT_EQ(parse.RSEnumItem(parse.RSEnumSection(file, 0), 0, name, value, line), 0u);
}

TEST_F(WrappersTest, WithoutRSFindSEction) {
  EXPECT_EQ(With("without_RSFindSEction").RSFindSection(file, "PROPERTY"), nullptr);
}

TEST_F(WrappersTest, WithoutRSCloseFile) {
  CRUXParse& parse = With("without_RSCloseFile");
  void* const opened = file;
  EXPECT_EQ(parse.RSCloseFile(file), 0u);
  EXPECT_EQ(file, opened);
}

TEST_F(WrappersTest, WithoutAPluginNothingIsFoundAndLoadingIsTold) {
  host::SetPlugin("");
  CRUXParse parse;
  EXPECT_EQ(host::TakeMessages(),
            std::vector<std::string>{
                "Parse::load rsparsea(/usr/pelm/lib/libruxrsparser.so.0) failed.\n"});
  EXPECT_EQ(parse.RSOpenFile("script"), nullptr);
  EXPECT_EQ(parse.RSParse(&parse), 0u);
  EXPECT_EQ(parse.RSEnumSection(&parse, 0), nullptr);
  EXPECT_EQ(parse.RSGetSectInfo(&parse, name, line), 0u);
  EXPECT_EQ(parse.RSEnumItem(&parse, 0, name, value, line), 0u);
  EXPECT_EQ(parse.RSFindSection(&parse, "SENSOR"), nullptr);
  EXPECT_EQ(parse.RSCloseFile(file), 0u);
  EXPECT_EQ(host::TakeMessages(), std::vector<std::string>{});
}

TEST_F(WrappersTest, SizesThatAreGivenCountEvenWhenTheAnswerIsZero) {
  CRUXParse& parse = With("sizes_answer_zero");
  void* section = parse.RSEnumSection(file, 0);
  EXPECT_NE(parse.RSGetSectInfo(section, name, line), 0u);
  EXPECT_EQ(name, "GLOBAL");
  EXPECT_NE(parse.RSEnumItem(section, 0, name, value, line), 0u);
  EXPECT_EQ(name, "G_A");
}

TEST_F(WrappersTest, NameThatCannotBeHadIsAFailure) {
  for (const char* plugin : {"fails_on_size", "fails_on_name"}) {
    SCOPED_TRACE(plugin);
    CRUXParse& parse = With(plugin);
    EXPECT_EQ(parse.RSGetSectInfo(parse.RSEnumSection(file, 1), name, line), 0u);
    EXPECT_NE(parse.RSGetSectInfo(parse.RSEnumSection(file, 2), name, line), 0u);
  }
}

// One object can read one script while another reads the file that it includes.
TEST_F(WrappersTest, ObjectsKeepTheirPluginsApart) {
  CRUXParse& parse = With("complete");
  host::SetPlugin(StandIn("without_RSOpenFile"));
  CRUXParse other;
  EXPECT_EQ(other.Start("script"), 0u);
  EXPECT_EQ(parse.Start("script"), 1u);
}

}  // namespace
