// Questions to a read model when no memory is left: all are answered as they always are.
#include <cstdint>
#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "ruxcomp/model.h"
#include "tests/api/meta_bytes.h"

// Compilers that check for undefined behaviour keep the parts of the model that ask the library,
// and with them the library.
extern "C" __attribute__((visibility("default"))) void Output(unsigned int, const char*, ...) {}

namespace {

bool is_memory_left = true;
std::size_t refusals = 0;

void* Allocate(std::size_t size) noexcept {
  if (is_memory_left) return std::malloc(size == 0 ? 1 : size);
  ++refusals;
  return nullptr;
}
void* AllocateOrThrow(std::size_t size) {
  if (void* memory = Allocate(size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using ruxcomp::Model;
using ruxcomp::Section;

constexpr std::uint32_t kSections = 100;
constexpr std::uint32_t kProperties = 500;

class WithoutMemoryTest : public testing::Test {
 protected:
  ~WithoutMemoryTest() override { is_memory_left = true; }
};

// Devices with names and IDs, then a section of so many properties that its entries are looked up.
Model Devices(const std::vector<std::string>& names) {
  ruxcomp::ModelBuilder builder;
  for (std::uint32_t i = 0; i < kSections; ++i) {
    builder.AddSection(RUX_SECT_DEVICE);
    builder.AddEntry(RUX_ENTRY_NAME, Words{RUX_CLASS_String + i});
    builder.AddEntry(RUX_ENTRY_ID, Words{RUX_CLASS_Dword + i});
  }
  builder.AddSection(RUX_SECT_PROPERTY);
  for (std::uint32_t i = 0; i < kProperties; ++i) {
    builder.AddEntry(RUX_CLASS_Property + i, Words{RUX_CLASS_Dword});
    builder.AddText(RUX_CLASS_Property + i, names[i]);
    builder.AddText(RUX_CLASS_String + i, names[i]);
    builder.AddNumber(RUX_CLASS_Dword + i, 1000 + i);
  }
  return Model(std::move(builder));
}

// Nothing here takes memory of its own.
std::uint32_t WrongAnswers(const Model& model, const std::vector<std::string>& names) {
  std::uint32_t wrong = 0;
  const ruxcomp::Sections devices = model.sections(RUX_SECT_DEVICE);
  for (std::uint32_t i = 0; i < kSections; ++i) {
    wrong += model.section_named(RUX_SECT_DEVICE, names[i]) == devices[i] ? 0 : 1;
    wrong += model.section_with_id(RUX_SECT_DEVICE, 1000 + i) == devices[i] ? 0 : 1;
    wrong += devices[i].ordinal() == i ? 0 : 1;
  }
  wrong += model.section_named(RUX_SECT_DEVICE, "none") ? 1 : 0;
  wrong += model.section_with_id(RUX_SECT_DEVICE, 999) ? 1 : 0;
  const Section properties = model.section_named(RUX_SECT_PROPERTY, names.back());
  std::uint32_t i = 0;
  for (const ruxcomp::Entry entry : properties.entries()) {
    wrong += properties.entry(RUX_CLASS_Property + i) == entry ? 0 : 1;
    wrong += properties.entry_named(names[i]) == entry ? 0 : 1;
    wrong += properties.entries()[i] == entry ? 0 : 1;
    ++i;
  }
  return wrong + (i == kProperties ? 0 : 1);
}

TEST_F(WithoutMemoryTest, QuestionsAreAnsweredAllTheSame) {
  std::vector<std::string> names;
  for (std::uint32_t i = 0; i < kProperties; ++i) names.push_back("NAME_" + std::to_string(i));
  const Model model = Devices(names);
  is_memory_left = false;
  const std::uint32_t wrong = WrongAnswers(model, names);
  is_memory_left = true;
  EXPECT_EQ(wrong, 0u);
  EXPECT_GE(refusals, 5u) << "one for each of the indices";
  EXPECT_EQ(WrongAnswers(model, names), 0u) << "with memory again, they are made";
  is_memory_left = false;
  const std::size_t before = refusals;
  const std::uint32_t wrong_in_the_end = WrongAnswers(model, names);
  is_memory_left = true;
  EXPECT_EQ(wrong_in_the_end, 0u);
  EXPECT_EQ(refusals, before) << "what is made needs no more memory";
}

}  // namespace
