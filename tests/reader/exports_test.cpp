// The seven exports of the built plug-in, called as the library calls them.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <sstream>
#include <thread>

#include "tests/reader/plugin_host.h"

namespace {

using namespace std::string_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

auto IsItem(const std::string& key, const std::string& value, std::uint32_t line) {
  return AllOf(Field(&HostItem::key, key), Field(&HostItem::value, value),
               Field(&HostItem::line, line));
}

class ExportsTest : public PluginTest {};

// nm prints "name type ..." rows, sorted by name.
TEST_F(ExportsTest, NothingButTheSevenNamesIsExported) {
  std::istringstream rows(
      Shell(RUX_NM " --dynamic --defined-only --format=posix " RUX_READER_PLUGIN).output);
  std::vector<std::string> names;
  for (std::string row; std::getline(rows, row);) {
    const std::string name = row.substr(0, row.find(' '));
    // Entry points of the sanitizers' own, in builds with them.
    if (name.compare(0, 2, "__") != 0) names.push_back(name);
  }
  EXPECT_THAT(names, ElementsAre("RSCloseFile", "RSEnumItem", "RSEnumSection", "RSFindSEction",
                                 "RSGetSectInfo", "RSOpenFile", "RSParse"));
}

TEST_F(ExportsTest, TheFileKnowsItsName) {
  EXPECT_EQ(fs::path(RUX_READER_PLUGIN).filename(), "libruxrsparser.so.0");
  EXPECT_THAT(Shell(RUX_READELF " --dynamic " RUX_READER_PLUGIN).output,
              HasSubstr("soname: [libruxrsparser.so.0]"));
}

TEST_F(ExportsTest, SectionsAndItemsComeInScriptOrder) {
  void* file = Load(folder.Write("board.rux",
                                 "# board\n"
                                 "[SENSOR]\n"
                                 "NAME = \"CPU 0\"\n"
                                 "VALUE = VT_READ , \\\n"
                                 "        G_X\n"
                                 "\n"
                                 "[ SENSOR ]\n"
                                 "[DEVICE]\n"
                                 "FLAG\n"));
  const std::vector<HostSection> sections = ReadAll(file);
  ASSERT_EQ(sections.size(), 3u);
  EXPECT_EQ(sections[0].name, "SENSOR");
  EXPECT_EQ(sections[0].line, 2u);
  EXPECT_THAT(sections[0].items,
              ElementsAre(IsItem("NAME", "\"CPU 0\"", 3), IsItem("VALUE", "VT_READ,G_X", 4)));
  EXPECT_EQ(sections[1].name, "SENSOR");
  EXPECT_EQ(sections[1].line, 7u);
  EXPECT_THAT(sections[1].items, IsEmpty());
  EXPECT_EQ(sections[2].name, "DEVICE");
  EXPECT_EQ(sections[2].line, 8u);
  EXPECT_THAT(sections[2].items, ElementsAre(IsItem("FLAG", "", 9)));
  close_file(&file);
}

TEST_F(ExportsTest, SectionInfoTakesTwoCalls) {
  void* file = Load(folder.Write("a.rux", "\n[SENSOR]\n"));
  void* section = enum_section(file, 0, 0);
  std::uint32_t size = 0;
  std::uint32_t line = 77;
  EXPECT_EQ(get_sect_info(section, nullptr, &size, &line), 1u);
  EXPECT_EQ(size, 7u);
  EXPECT_EQ(line, 77u);
  std::array<char, 8> name{'?', '?', '?', '?', '?', '?', '?', '?'};
  EXPECT_EQ(get_sect_info(section, name.data(), &size, &line), 1u);
  EXPECT_EQ(std::string(name.data(), name.size()), "SENSOR\0?"s);
  EXPECT_EQ(line, 2u);
  close_file(&file);
}

TEST_F(ExportsTest, ATooSmallNameBufferStaysUntouched) {
  void* file = Load(folder.Write("a.rux", "[SENSOR]\n"));
  std::uint32_t size = 6;
  std::uint32_t line = 77;
  std::array<char, 7> name{'?', '?', '?', '?', '?', '?', '?'};
  EXPECT_EQ(get_sect_info(enum_section(file, 0, 0), name.data(), &size, &line), 0u);
  EXPECT_EQ(size, 7u);
  EXPECT_EQ(line, 77u);
  EXPECT_EQ(std::string(name.data(), name.size()), "???????");
  close_file(&file);
}

TEST_F(ExportsTest, AnEmptyNameNeedsOneByte) {
  void* file = Load(folder.Write("a.rux", "[]\n"));
  std::uint32_t size = 0;
  std::uint32_t line = 0;
  EXPECT_EQ(get_sect_info(enum_section(file, 0, 0), nullptr, &size, &line), 1u);
  EXPECT_EQ(size, 1u);
  close_file(&file);
}

TEST_F(ExportsTest, AnItemTakesTwoCalls) {
  void* file = Load(folder.Write("a.rux", "[A]\nKEY = VALUE\n"));
  void* section = enum_section(file, 0, 0);
  std::uint32_t key_size = 0;
  std::uint32_t value_size = 0;
  std::uint32_t line = 77;
  EXPECT_EQ(enum_item(section, 0, nullptr, &key_size, nullptr, &value_size, &line), 1u);
  EXPECT_EQ(key_size, 4u);
  EXPECT_EQ(value_size, 6u);
  EXPECT_EQ(line, 77u);
  std::array<char, 5> key{'?', '?', '?', '?', '?'};
  std::array<char, 7> value{'?', '?', '?', '?', '?', '?', '?'};
  EXPECT_EQ(enum_item(section, 0, key.data(), &key_size, value.data(), &value_size, &line), 1u);
  EXPECT_EQ(std::string(key.data(), key.size()), "KEY\0?"s);
  EXPECT_EQ(std::string(value.data(), value.size()), "VALUE\0?"s);
  EXPECT_EQ(line, 2u);
  EXPECT_EQ(enum_item(section, 1, nullptr, &key_size, nullptr, &value_size, &line), 0u);
  close_file(&file);
}

// Either buffer may be the small one.
TEST_F(ExportsTest, ATooSmallItemBufferLeavesBothUntouched) {
  void* file = Load(folder.Write("a.rux", "[A]\nKEY = VALUE\n"));
  for (const auto& [key_room, value_room] : {std::pair{3u, 6u}, std::pair{4u, 5u}}) {
    std::uint32_t key_size = key_room;
    std::uint32_t value_size = value_room;
    std::uint32_t line = 77;
    std::array<char, 4> key{'?', '?', '?', '?'};
    std::array<char, 6> value{'?', '?', '?', '?', '?', '?'};
    EXPECT_EQ(enum_item(enum_section(file, 0, 0), 0, key.data(), &key_size, value.data(),
                        &value_size, &line),
              0u);
    EXPECT_EQ(key_size, 4u);
    EXPECT_EQ(value_size, 6u);
    EXPECT_EQ(line, 77u);
    EXPECT_EQ(std::string(key.data(), key.size()), "????");
    EXPECT_EQ(std::string(value.data(), value.size()), "??????");
  }
  close_file(&file);
}

TEST_F(ExportsTest, SectionsAreFoundByExactName) {
  void* file = Load(folder.Write("a.rux", "[A]\n[B]\nK=1\n[B]\n"));
  EXPECT_EQ(find_section(file, "A", 0), enum_section(file, 0, 0));
  EXPECT_EQ(find_section(file, "B", 0), enum_section(file, 1, 0));
  EXPECT_EQ(find_section(file, "b", 0), nullptr);
  EXPECT_EQ(find_section(file, "", 0), nullptr);
  close_file(&file);
}

TEST_F(ExportsTest, BeforeParsingThereAreNoSections) {
  void* file = open_file(folder.Write("a.rux", "[A]\n"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(enum_section(file, 0, 0), nullptr);
  EXPECT_EQ(find_section(file, "A", 0), nullptr);
  EXPECT_EQ(parse(file), 1u);
  EXPECT_NE(enum_section(file, 0, 0), nullptr);
  EXPECT_EQ(enum_section(file, 1, 0), nullptr);
  EXPECT_EQ(enum_section(file, 0xFFFFFFFF, 0), nullptr);
  close_file(&file);
}

TEST_F(ExportsTest, NullHandlesAreAnswered) {
  std::uint32_t size = 0;
  std::uint32_t line = 0;
  void* none = nullptr;
  EXPECT_EQ(parse(nullptr), 0u);
  EXPECT_EQ(enum_section(nullptr, 0, 0), nullptr);
  EXPECT_EQ(get_sect_info(nullptr, nullptr, &size, &line), 0u);
  EXPECT_EQ(enum_item(nullptr, 0, nullptr, &size, nullptr, &size, &line), 0u);
  EXPECT_EQ(find_section(nullptr, "A", 0), nullptr);
  EXPECT_EQ(close_file(nullptr), 0u);
  EXPECT_EQ(close_file(&none), 0u);
}

TEST_F(ExportsTest, ClosingClearsTheHandle) {
  void* file = Load(folder.Write("a.rux", "[A]\n"));
  EXPECT_EQ(close_file(&file), 1u);
  EXPECT_EQ(file, nullptr);
  EXPECT_EQ(close_file(&file), 0u);
}

TEST_F(ExportsTest, AnIncludedFileIsReadBetweenTwoSectionsOfTheOuterOne) {
  void* outer = Load(folder.Write("outer.rux", "[A]\nK=1\n[B]\nK=2\n"));
  EXPECT_EQ(ReadInfo(enum_section(outer, 0, 0)).name, "A");
  void* inner = Load(folder.Write("inner.rux", "[C]\nK=3\n"));
  EXPECT_EQ(ReadInfo(enum_section(inner, 0, 0)).name, "C");
  EXPECT_EQ(ReadAll(outer).size(), 2u);
  close_file(&inner);
  HostItem item{};
  ASSERT_TRUE(ReadItem(enum_section(outer, 1, 0), 0, &item));
  EXPECT_THAT(item, IsItem("K", "2", 4));
  close_file(&outer);
}

TEST_F(ExportsTest, AFileIsRefusedWhileItIsReadFurtherUp) {
  const std::string path = folder.Write("a.rux", "[A]\n");
  void* outer = Load(path);
  enum_section(outer, 0, 0);
  void* middle = Load(folder.Write("b.rux", "[B]\n"));
  enum_section(middle, 0, 0);
  EXPECT_EQ(open_file(path), nullptr);
  EXPECT_EQ(open_file(folder / "./a.rux"), nullptr);
  close_file(&middle);
  EXPECT_EQ(open_file(path), nullptr);
  close_file(&outer);
  outer = open_file(path);
  EXPECT_NE(outer, nullptr);
  close_file(&outer);
}

TEST_F(ExportsTest, AFileThatIsReadIsKnownUnderEveryName) {
  void* file = Load(folder.Write("a.rux", "[A]\n"));
  find_section(file, "A", 0);
  fs::create_symlink("a.rux", folder / "symbolic.rux");
  fs::create_hard_link(folder / "a.rux", folder / "hard.rux");
  EXPECT_EQ(open_file(folder / "symbolic.rux"), nullptr);
  EXPECT_EQ(open_file(folder / "hard.rux"), nullptr);
  close_file(&file);
  file = open_file(folder / "symbolic.rux");
  EXPECT_NE(file, nullptr);
  close_file(&file);
}

TEST_F(ExportsTest, AnEqualFileElsewhereIsAnotherFile) {
  void* one = open_file(folder.Write("a.rux", "[A]\n"));
  void* two = open_file(folder.Write("b.rux", "[A]\n"));
  EXPECT_NE(one, nullptr);
  EXPECT_NE(two, nullptr);
  close_file(&one);
  close_file(&two);
}

// The outer one is closed first: the order does not matter.
TEST_F(ExportsTest, FilesMayBeClosedInAnyOrder) {
  const std::string path = folder.Write("a.rux", "[A]\n");
  void* one = open_file(path);
  void* two = open_file(folder.Write("b.rux", "[B]\n"));
  enum_section(two, 0, 0);
  close_file(&one);
  EXPECT_EQ(open_file(folder / "b.rux"), nullptr);
  one = open_file(path);
  EXPECT_NE(one, nullptr);
  close_file(&two);
  close_file(&one);
}

TEST_F(ExportsTest, WhatIsNoReadableFileIsRefused) {
  EXPECT_EQ(open_file(folder / "missing.rux"), nullptr);
  EXPECT_EQ(open_file(folder / "missing\\board.rux"), nullptr);
  EXPECT_EQ(open_file(folder.path()), nullptr);
  EXPECT_EQ(open_file(""), nullptr);
  // Opens, but cannot be read at its start.
  EXPECT_EQ(open_file("/proc/self/mem"), nullptr);
  EXPECT_THAT(Messages(), IsEmpty());
}

// In a process of its own, since root may read everything and must step down.
TEST_F(ExportsTest, AFileWithoutPermissionIsRefused) {
  fs::permissions(folder.path(), fs::perms::all);
  fs::permissions(folder.Write("secret.rux", "[A]\n"), fs::perms::none);
  const auto refused = [&] {
    if (geteuid() == 0 && setuid(65534) != 0) return false;
    return fs::exists(folder / "secret.rux") && open_file(folder / "secret.rux") == nullptr;
  };
  EXPECT_EXIT(_exit(refused() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST_F(ExportsTest, BackslashesNameFoldersWhereThereIsNoSuchFile) {
  fs::create_directories(folder / "dir/sub");
  folder.Write("dir/sub/board.rux", "[A]\n");
  void* file = open_file(Backslashed("dir\\sub\\board.rux"));
  EXPECT_NE(file, nullptr);
  close_file(&file);
}

TEST_F(ExportsTest, AFileWithBackslashesInItsNameIsTakenFirst) {
  fs::create_directory(folder / "dir");
  folder.Write("dir/board.rux", "[FOLDER]\n");
  folder.Write("dir\\board.rux", "[LITERAL]\n");
  void* file = Load(folder / "dir\\board.rux");
  EXPECT_EQ(ReadInfo(enum_section(file, 0, 0)).name, "LITERAL");
  close_file(&file);
  fs::remove(folder / "dir\\board.rux");
  file = Load(folder / "dir\\board.rux");
  EXPECT_EQ(ReadInfo(enum_section(file, 0, 0)).name, "FOLDER");
  close_file(&file);
}

// As it is, the path is one name that no file system would take.
TEST_F(ExportsTest, ALongPathOfBackslashesIsRead) {
  const std::string part(200, 'd');
  fs::create_directories(folder / (part + "/" + part));
  folder.Write(part + "/" + part + "/board.rux", "[A]\n");
  void* file = open_file(folder / (part + "\\" + part + "\\board.rux"));
  EXPECT_NE(file, nullptr);
  close_file(&file);
}

// As a shell hands one over.
TEST_F(ExportsTest, AnOpenPipeIsReadToItsEnd) {
  const std::string text = "[A]\nK = V\n";
  for (const char* folder_of_descriptors : {"/dev/fd/", "\\dev\\fd\\", "/proc/self/fd/"}) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    close(ends[1]);
    void* file = Load(folder_of_descriptors + std::to_string(ends[0]));
    const std::vector<HostSection> sections = ReadAll(file);
    ASSERT_EQ(sections.size(), 1u);
    EXPECT_THAT(sections[0].items, ElementsAre(IsItem("K", "V", 2)));
    close_file(&file);
    close(ends[0]);
  }
}

// Nobody writes to it: to open it would wait without end.
TEST_F(ExportsTest, ANamedPipeIsNotOpened) {
  const std::string path = folder / "pipe";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_EQ(open_file(path), nullptr);
  EXPECT_EQ(open_file("/dev/zero"), nullptr);
}

// Only those of which sections were asked for can include what is opened next.
TEST_F(ExportsTest, AScriptThatWasOpenedAndForgottenIsOpenedAgain) {
  const std::string path = folder.Write("board.rux", "[A]\nK = V\n");
  std::vector<void*> files;
  for (int i = 0; i < 1500; ++i) files.push_back(Load(path));
  for (void* file : files) ASSERT_NE(file, nullptr);
  EXPECT_EQ(ReadAll(files[700]).size(), 1u);
  EXPECT_EQ(open_file(path), nullptr);
  close_file(&files[700]);
  void* again = open_file(path);
  EXPECT_NE(again, nullptr);
  close_file(&again);
  for (void*& file : files) close_file(&file);
}

}  // namespace
