// Queries without memory: whichever allocation fails, they answer what they always answer.
#include <cstdlib>
#include <cstring>
#include <new>

#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

constexpr long kAll = -1;
long allocations_left = kAll;  // that succeed; after them, all fail
bool has_failed = false;

void* Allocate(std::size_t size) {
  if (allocations_left == 0) {
    has_failed = true;
    throw std::bad_alloc();
  }
  if (allocations_left != kAll) --allocations_left;
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (!memory) throw std::bad_alloc();
  return memory;
}

}  // namespace

// The library's memory comes from here, too: clang hides these like everything else.
#pragma GCC visibility push(default)
void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return Allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
#pragma GCC visibility pop

namespace {

constexpr char kScript[] =
    "[DEFINE]\nT5 = 5\n[GROUP]\nPARENT = 0\nNAME = THE_GROUP_OF_THE_WHOLE_BOARD\nCHILDGROUP = 0\n"
    "[DEVICE]\nNAME = FAN\nID = 7\nINITFLAG = 0\nCONTROLMASK = 0\n"
    "VALUE_SPEED_OF_THE_FIRST_FAN = T5,1,2,BUS,0x1000,A_LONG_ARGUMENT_OF_THE_VALUE,4\n"
    "[DEVICE]\nNAME = THE_SECOND_FAN_OF_THE_BOARD\nID = 8\nINITFLAG = 0\nCONTROLMASK = 0\n"
    "P_A_PROPERTY_OF_THE_SECOND_FAN = red\n"
    "[GLOBAL]\nG_DUTY_CYCLE_OF_ALL_THE_FANS = T5,1,2,BUS,0,1\n";

// What a query answers: a handle, or a number; for texts, one that differs between them.
using Answer = std::uintptr_t;
Answer Of(const void* handle) { return reinterpret_cast<Answer>(handle); }
Answer Of(const tagTBLDATA& data) {
  return data.kind == RUX_DATA_STRING ? Of(data.data.string) : data.data.number;
}
Answer OfText(const char* text) {
  Answer answer = 0;
  for (; *text; ++text) answer = answer * 31 + static_cast<unsigned char>(*text);
  return answer;
}

GCSECTION Device(std::uint32_t ordinal) { return gcGetSectByIndex(RUX_SECT_DEVICE, ordinal); }
GDSECTION WrittenDevice() { return gdGetSectByIndex(RUX_SECT_DEVICE, 0); }

using Query = Answer();
Query* const kQueries[] = {
    [] { return Answer{gcGetSectCount(RUX_SECT_DEVICE)}; },
    [] { return Answer{gcGetSectCount(RUX_SECT_SENSOR)}; },
    [] { return Of(gcGetSectByIndex(RUX_SECT_DEVICE, 1)); },
    [] { return Of(gcGetSectByIndex(RUX_SECT_DEVICE, 2)); },
    [] { return Of(gcGetSectByIndex(RUX_SECT_SENSOR, 0)); },
    [] { return Of(gcGetSectByID(RUX_SECT_DEVICE, 8)); },
    [] { return Of(gcGetSectByID(RUX_SECT_DEVICE, 9)); },
    [] { return Of(gcGetSectByID(RUX_SECT_GROUP, 8)); },
    [] { return Of(gcGetSectByName(RUX_SECT_DEVICE, "FAN")); },
    [] { return Of(gcGetSectByName(RUX_SECT_DEVICE, "THE_SECOND_FAN_OF_THE_BOARD")); },
    [] { return Of(gcGetSectByName(RUX_SECT_DEVICE, "THE_THIRD_FAN_OF_THE_BOARD")); },
    [] { return Of(gcGetSectByName(RUX_SECT_GLOBAL, "DUTY_CYCLE_OF_ALL_THE_FANS")); },
    [] { return Of(gcGetSectByName(RUX_SECT_SENSOR, "THE_SECOND_FAN_OF_THE_BOARD")); },
    [] { return Answer{gcGetGroupIndex("THE_GROUP_OF_THE_WHOLE_BOARD")}; },
    [] { return Answer{gcGetGroupIndex("ANOTHER_GROUP_OF_THE_BOARD")}; },
    [] { return Answer{gcGetEntryCount(Device(1))}; },
    [] { return Of(gcGetEntryByType(Device(1), RUX_ENTRY_NAME)); },
    [] { return Of(gcGetEntryByIndex(Device(1), 2, nullptr)); },
    [] { return Of(gcGetEntryByName(Device(1), "A_PROPERTY_OF_THE_SECOND_FAN", nullptr)); },
    [] { return Of(gcGetEntryByName(Device(1), "A_PROPERTY_OF_THE_FIRST_FAN", nullptr)); },
    [] { return Answer{gcGetValueCount(gcGetEntryByIndex(Device(0), 4, nullptr))}; },
    [] { return Of(gcGetValueByIndex(gcGetEntryByIndex(Device(1), 0, nullptr), 0)); },
    [] { return Of(gcGetValueByID(gcGetEntryByIndex(Device(0), 4, nullptr), 0x90000)); },
    [] {
      std::uint8_t cells[RUX_TABLE_CELLS];
      return Answer{gcGetTableData(0, cells)};
    },
    [] { return Of(gdGetSectByIndex(RUX_SECT_DEVICE, 1)); },
    [] { return OfText(gdGetSectName(WrittenDevice())); },
    [] { return Of(gdGetSectPName(WrittenDevice())); },
    [] { return Answer{gdGetSectID(WrittenDevice())}; },
    [] { return OfText(gdGetEntryName(gdGetEntryByIndex(WrittenDevice(), 4))); },
    [] {
      char text[128] = "";
      gdGetValue(gdGetEntryByIndex(WrittenDevice(), 4), text);
      return OfText(text);
    },
    [] { return Answer{gdGetValue(gdGetEntryByIndex(WrittenDevice(), 4), nullptr)}; },
};

class OutOfMemoryTest : public ScriptTest {
 protected:
  void SetUp() override {
    ScriptTest::SetUp();
    Parse(kScript);
    ASSERT_EQ(CheckModel(), 0u);  // BUS is no word; both files can be written all the same
    gccOutput(Path("board.meta"));
    gccOutputD(Path("board.metad"));
    gccCompEnd();
    host::TakeMessages();
    ASSERT_EQ(gdInit(Path("board.metad")), 1u);
  }
  void TearDown() override {
    gcUnInit();
    ScriptTest::TearDown();
  }

  // Loads the file anew: nothing is remembered of it.
  void Load() {
    gcUnInit();
    ASSERT_EQ(gcInit(Path("board.meta")), 1u);
  }

  // Asks while all allocations after the first ones fail; the last-error code comes with the
  // answer.
  static std::pair<Answer, std::uint32_t> Ask(Query* query, long allocations) {
    gcSetLastError(70);
    gdSetLastError(70);
    has_failed = false;
    allocations_left = allocations;
    const Answer answer = query();
    allocations_left = kAll;
    return {answer, gcGetLastError() * 1000 + gdGetLastError()};
  }
};

TEST_F(OutOfMemoryTest, TheLibraryTakesItsMemoryFromHere) {
  gcUnInit();
  const std::string path = Path("board.meta");
  allocations_left = 0;
  EXPECT_THROW(gcInit(path), std::bad_alloc);
  allocations_left = kAll;
}

TEST_F(OutOfMemoryTest, QueriesAnswerTheSameWhicheverAllocationFails) {
  std::size_t failures = 0;
  for (std::size_t i = 0; i < std::size(kQueries); ++i) {
    SCOPED_TRACE(i);
    for (long allocations = 0;; ++allocations) {
      Load();
      const auto answer = Ask(kQueries[i], allocations);
      if (!has_failed) break;
      ++failures;
      EXPECT_EQ(answer, Ask(kQueries[i], kAll)) << "after " << allocations << " allocations";
    }
  }
  EXPECT_GT(failures, std::size(kQueries));
}

}  // namespace
