// The compiled-data interface as C++ hosts see it, and as hosts see it that look it up by name.
#include <dlfcn.h>

#include <array>
#include <cstddef>
#include <type_traits>

#include "tests/api/meta_bytes.h"

namespace {

constexpr std::uint32_t kDevice = 0x01000006;

const char kScript[] =
    "[GROUP]\nPARENT = 0\nNAME = BOARD\nCHILDGROUP = 0\n"
    "[DEVICE]\nNAME = FAN\nID = 7\nINITFLAG = 0\nCONTROLMASK = 0\nP_ROOM = lab\n"
    "[DEFINE]\nT1 = 1\n[GLOBAL]\nG_A = T1,5\n"
    "[TABLE]\nNAME = CURVE\nTYPE = 1\n0.255 = 3\n";

static_assert(sizeof(tagTBLDATA) == 16 && offsetof(tagTBLDATA, kind) == 0 &&
              offsetof(tagTBLDATA, index) == 4 && offsetof(tagTBLDATA, data) == 8);
static_assert(sizeof(tagMETAFILEINFO) == 8 && offsetof(tagMETAFILEINFO, version) == 0 &&
              offsetof(tagMETAFILEINFO, creationTime) == 4);
static_assert(std::is_same_v<decltype(gcGetValueByIndex(nullptr, 0)), tagTBLDATA>);

class InterfaceTest : public MetaTest {
 protected:
  void SetUp() override {
    MetaTest::SetUp();
    library_ = dlopen("libruxcomp.so.0", RTLD_NOW);
    ASSERT_NE(library_, nullptr) << dlerror();
  }
  void TearDown() override {
    MetaTest::TearDown();
    dlclose(library_);
  }

  // An exported function, as a host without the headers would call it.
  template <class Function>
  Function* Find(const char* name) const {
    void* address = dlsym(library_, name);
    EXPECT_NE(address, nullptr) << name;
    return reinterpret_cast<Function*>(address);
  }

  // Exported data, wherever the program keeps it.
  template <class Data>
  Data* FindData(const char* name) const {
    void* address = dlsym(RTLD_DEFAULT, name);
    EXPECT_NE(address, nullptr) << name;
    return static_cast<Data*>(address);
  }

 private:
  void* library_ = nullptr;
};

TEST_F(InterfaceTest, NamesMayBeStandardStrings) {
  LoadScript(kScript);
  const std::string fan = "FAN";
  const GCSECTION device = gcGetSectByName(kDevice, fan);
  EXPECT_EQ(device, gcGetSectByIndex(kDevice, 0));
  EXPECT_EQ(gcGetSectByName(kDevice, std::string("NONE")), nullptr);
  EXPECT_EQ(gcGetLastError(), 7u);
  EXPECT_EQ(gcGetGroupIndex(std::string("BOARD")), 1u);
  std::uint32_t identifier = 0;
  EXPECT_NE(gcGetEntryByName(device, std::string("ROOM"), &identifier), nullptr);
  EXPECT_EQ(identifier, 0x03000000u);
}

TEST_F(InterfaceTest, TheInfoMayBeLeftOut) {
  CompileAnyway(kScript);
  EXPECT_EQ(gcInit(Path("board.meta")), 1u);
}

TEST_F(InterfaceTest, TheNamedConstantsAreTheNumbersOfTheFile) {
  EXPECT_EQ(Hex({RUX_SECT_MORVRUX, RUX_SECT_PROPERTY, RUX_SECT_SYSTEM, RUX_SECT_GROUP}),
            "0x01000001 0x01000002 0x01000003 0x01000004");
  EXPECT_EQ(Hex({RUX_SECT_SENSOR, RUX_SECT_DEVICE, RUX_SECT_ACTION, RUX_SECT_TABLE}),
            "0x01000005 0x01000006 0x01000007 0x01000008");
  EXPECT_EQ(Hex({RUX_SECT_PELMGROUP, RUX_SECT_GLOBAL, RUX_SECT_REPEATER}),
            "0x01000009 0x0100000A 0x0100000B");
  EXPECT_EQ(Hex({RUX_ENTRY_ID, RUX_ENTRY_NAME, RUX_ENTRY_SENSORS}),
            "0x02000008 0x02000015 0x02000016");
  EXPECT_EQ(Hex({RUX_CLASS_Property, RUX_CLASS_TableName, RUX_CLASS_TableData}),
            "0x03000000 0x1C000000 0x1B000000");
}

TEST_F(InterfaceTest, ARunGoesThroughFunctionsFoundByName) {
  Write("board.rux", kScript);
  using WithPath = std::uint32_t(const std::string&);
  EXPECT_NE(Find<WithPath>("gccCompStart")(ScriptPath("board.rux")), 0u);
  Find<std::uint32_t()>("gccParse")();
  EXPECT_EQ(Find<std::uint32_t()>("gccCheck")(), 1u);
  EXPECT_EQ(Find<WithPath>("gccOutput")(Path("board.meta")), 1u);
  Find<void()>("gccCompEnd")();
  tagMETAFILEINFO info{};
  auto* init = Find<std::uint32_t(const std::string&, tagMETAFILEINFO*)>("gcInit");
  EXPECT_EQ(init(Path("board.meta"), &info), 1u);
  EXPECT_EQ(info.version, 0x01000000u);
  EXPECT_EQ(Find<std::uint32_t(std::uint32_t)>("gcGetSectCount")(kDevice), 1u);
  EXPECT_EQ(Find<std::uint32_t()>("gcUnInit")(), 1u);
  EXPECT_EQ(Find<std::uint32_t(std::uint32_t)>("gcGetSectCount")(kDevice), 0u);
}

TEST_F(InterfaceTest, SectionsAreFoundThroughFunctionsFoundByName) {
  LoadScript(kScript);
  void* device = Find<void*(std::uint32_t, std::uint32_t)>("gcGetSectByIndex")(kDevice, 0);
  EXPECT_NE(device, nullptr);
  EXPECT_EQ(Find<void*(std::uint32_t, std::uint32_t)>("gcGetSectByID")(kDevice, 7), device);
  EXPECT_EQ(Find<void*(std::uint32_t, const char*)>("gcGetSectByName")(kDevice, "FAN"), device);
  EXPECT_EQ(Find<std::uint32_t(const char*)>("gcGetGroupIndex")("BOARD"), 1u);
}

TEST_F(InterfaceTest, EntriesAndValuesAreFoundThroughFunctionsFoundByName) {
  LoadScript(kScript);
  void* device = gcGetSectByIndex(kDevice, 0);
  EXPECT_EQ(Find<std::uint32_t(void*)>("gcGetEntryCount")(device), 5u);
  void* room = Find<void*(void*, std::uint32_t)>("gcGetEntryByType")(device, 0x03000000);
  EXPECT_NE(room, nullptr);
  std::uint32_t identifier = 0;
  using ByIndex = void*(void*, std::uint32_t, std::uint32_t*);
  EXPECT_EQ(Find<ByIndex>("gcGetEntryByIndex")(device, 4, &identifier), room);
  EXPECT_EQ(identifier, 0x03000000u);
  using ByName = void*(void*, const char*, std::uint32_t*);
  EXPECT_EQ(Find<ByName>("gcGetEntryByName")(device, "ROOM", &identifier), room);
  EXPECT_EQ(Find<std::uint32_t(void*)>("gcGetValueCount")(room), 1u);
  const tagTBLDATA data = Find<tagTBLDATA(void*, std::uint32_t)>("gcGetValueByIndex")(room, 0);
  EXPECT_EQ(Show(data), "0x12000001 string lab");
}

TEST_F(InterfaceTest, SelectedValuesAndCellsAreFoundThroughFunctionsFoundByName) {
  LoadScript(kScript);
  void* global = gcGetEntryByIndex(gcGetSectByIndex(0x0100000A, 0), 0, nullptr);
  const tagTBLDATA data = Find<tagTBLDATA(void*, std::uint32_t)>("gcGetValueByID")(global, 0x20000);
  EXPECT_EQ(data.kind, 1u);
  EXPECT_EQ(data.data.number, 5u);
  std::array<std::uint8_t, 256> cells{};
  using TableData = std::uint32_t(std::uint32_t, std::uint8_t*);
  EXPECT_EQ(Find<TableData>("gcGetTableData")(0, cells.data()), 1u);
  EXPECT_EQ(cells[255], 3u);
}

TEST_F(InterfaceTest, OnlyTheSetterOfTheLastErrorHasItsCppName) {
  Find<void(std::uint32_t)>("_Z14gcSetLastErrorj")(42);
  EXPECT_EQ(Find<std::uint32_t()>("gcGetLastError")(), 42u);
  EXPECT_EQ(gcGetLastError(), 42u);
  EXPECT_EQ(*FindData<std::uint32_t>("g_dwLastError"), 42u);
}

TEST_F(InterfaceTest, TheTablesAreDataUnderPlainNames) {
  LoadScript(kScript);
  using Names = std::map<std::string, std::uint32_t>;
  using Numbers = std::map<std::uint32_t, std::uint32_t>;
  for (const char* name : {"g_tblProperty", "g_tblGlobal", "g_tblGroup", "g_tblTableName",
                           "g_tblValue", "g_tblString"}) {
    EXPECT_FALSE(FindData<Names>(name)->empty()) << name;
  }
  EXPECT_EQ(*FindData<Names>("g_tblRepeater"), Names{});
  EXPECT_EQ(*FindData<Names>("g_tblAction"), Names{});
  EXPECT_EQ(FindData<Numbers>("g_tblDword")->at(7), 0x11000001u);
  EXPECT_EQ(FindData<std::vector<std::uint8_t>>("g_tblTableData")->size(), 256u);
}

TEST_F(InterfaceTest, TheCountersAndTheVersionAreDataUnderPlainNames) {
  LoadScript(kScript);
  const struct {
    const char* name;
    std::uint32_t value;
  } rows[] = {{"g_idxProperty", 0x03000001},  {"g_idxGlobal", 0x04000001},
              {"g_idxValue", 0x05000006},     {"g_idxRepeater", 0x06000000},
              {"g_idxDword", 0x11000004},     {"g_idxString", 0x12000003},
              {"g_idxGroup", 0x18000002},     {"g_idxAction", 0x1A000000},
              {"g_idxTableName", 0x1C000001}, {"RUX_VERSION", 0x01000000}};
  for (const auto& row : rows) {
    EXPECT_EQ(Hex({*FindData<const std::uint32_t>(row.name)}), Hex({row.value})) << row.name;
  }
}

}  // namespace
