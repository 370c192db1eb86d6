// The tables of the language, where no other test states their facts by hand.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/file_format.h"
#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/selectors.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/language/words.h"

namespace {

namespace language = ruxcomp::language;
using language::Form;
using language::Naming;
using language::Uniqueness;

struct KindFacts {
  const char* keyword;
  Form form;
  Naming naming;
  Uniqueness uniqueness;
};

constexpr KindFacts kKinds[] = {
    {"MORVRUX", Form::kCompiled, Naming::kUnnamed, Uniqueness::kSingle},
    {"PROPERTY", Form::kCompiled, Naming::kByKeys, Uniqueness::kKeys},
    {"SYSTEM", Form::kCompiled, Naming::kUnnamed, Uniqueness::kSingle},
    {"GROUP", Form::kCompiled, Naming::kByName, Uniqueness::kNameAndIdAfterParent},
    {"SENSOR", Form::kCompiled, Naming::kByName, Uniqueness::kNameAndId},
    {"DEVICE", Form::kCompiled, Naming::kByName, Uniqueness::kNameAndId},
    {"ACTION", Form::kCompiled, Naming::kByName, Uniqueness::kNameAndId},
    {"TABLE", Form::kCompiled, Naming::kByName, Uniqueness::kNameAndId},
    {"PELMGROUP", Form::kCompiled, Naming::kByName, Uniqueness::kNameAndId},
    {"GLOBAL", Form::kCompiled, Naming::kByKeys, Uniqueness::kKeys},
    {"REPEATER", Form::kCompiled, Naming::kByKeys, Uniqueness::kKeys},
    {"DEFINE", Form::kSourceOnly, Naming::kUnnamed, Uniqueness::kOwnKeys},
    {"IFDEF", Form::kSourceOnly, Naming::kUnnamed, Uniqueness::kOwnKeys},
    {"INCLUDE", Form::kNotRestored, Naming::kUnnamed, Uniqueness::kNothing},
};

TEST(LanguageTest, SectionKinds) {
  ASSERT_EQ(language::kSectionKindCount, std::size(kKinds));
  std::uint32_t number = 0;
  for (const KindFacts& facts : kKinds) {
    SCOPED_TRACE(facts.keyword);
    const language::SectionKind* kind = language::FindKind(facts.keyword);
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(kind, language::FindSourceKind(0x20000000 + ++number));
    EXPECT_EQ(kind, language::FindCompiledKind(0x01000000 + number));
    EXPECT_EQ(kind->form, facts.form);
    EXPECT_EQ(kind->naming, facts.naming);
    EXPECT_EQ(kind->uniqueness, facts.uniqueness);
  }
}

TEST(LanguageTest, NoKindHasOtherIdentifiers) {
  for (const std::uint32_t identifier :
       {0u, 1u, 0x01000001u, 0x20000000u, 0x2000000Fu, 0x21000001u, 0xFFFFFFFFu}) {
    EXPECT_EQ(language::FindSourceKind(identifier), nullptr) << identifier;
  }
  EXPECT_EQ(language::FindKind("sensor"), nullptr);
  EXPECT_EQ(language::FindKind(""), nullptr);
}

TEST(LanguageTest, EntryRows) {
  const language::EntryRow* hook = language::FindEntryRow(0x10080003);
  ASSERT_NE(hook, nullptr);
  EXPECT_EQ(hook->keyword, std::string("VALUE_DEINIT"));
  EXPECT_EQ(language::NameInKey(*hook, hook->keyword), "DEINIT");
  EXPECT_TRUE(hook->IsCompiled());
  const language::EntryRow* sensors = language::FindCompiledEntryRow(0x02000016);
  ASSERT_NE(sensors, nullptr);
  EXPECT_EQ(sensors->source, 0x10048001u);
  EXPECT_EQ(language::FindCompiledEntryRow(0), nullptr);
  EXPECT_EQ(language::FindEntryRow(0x1002001A), nullptr);
}

// Two rows share a keyword, and four have none.
TEST(LanguageTest, EntriesOfAKeyword) {
  const auto entries_of = [](std::string_view keyword) {
    std::vector<std::uint32_t> entries;
    std::size_t place = language::FirstOfKeyword(keyword);
    for (; place < language::kEntryCount; place = language::NextOfKeyword(place)) {
      entries.push_back(language::kEntries[place].source);
    }
    return entries;
  };
  using Entries = std::vector<std::uint32_t>;
  EXPECT_EQ(entries_of("NAME"), Entries{0x10020015});
  EXPECT_EQ(entries_of("SENSORS"), Entries{0x10048001});
  EXPECT_EQ(entries_of("VALUE_"), (Entries{0x10080007, 0x10080008}));
  EXPECT_EQ(entries_of(""), (Entries{0x10020012, 0x10010001, 0x10020017, 0x10100001}));
  for (const char* key : {"name", "NAM", "NAMES", "VALUE_X", " NAME", "SENSOR"}) {
    EXPECT_EQ(entries_of(key), Entries{}) << key;
  }
}

TEST(LanguageTest, EveryEntryIsFoundByKeywordAndIdentifier) {
  for (const language::EntryRow& row : language::kEntries) {
    EXPECT_EQ(language::FindEntryRow(row.source), &row);
    std::size_t place = language::FirstOfKeyword(row.keyword);
    while (place < language::kEntryCount && &language::kEntries[place] != &row) {
      place = language::NextOfKeyword(place);
    }
    EXPECT_LT(place, language::kEntryCount) << row.name;
  }
}

TEST(LanguageTest, References) {
  const language::Reference* parent = language::FindReference(0x20000005, 0x10020014);
  ASSERT_NE(parent, nullptr);  // of a sensor
  EXPECT_EQ(parent->target, language::SECTION_GROUP);
  EXPECT_EQ(parent->key, language::ENTRY_NAME);
  EXPECT_EQ(parent->unless, language::RefersUnless::kNever);
  const language::Reference* outer = language::FindReference(0x20000004, 0x10020014);
  ASSERT_NE(outer, nullptr);  // of a group
  EXPECT_EQ(outer->unless, language::RefersUnless::kRoot);
  EXPECT_EQ(language::FindReference(0x20000006, 0x10028008), nullptr);  // the ID of a device
}

TEST(LanguageTest, CompiledEntries) {
  const auto entries = language::CompiledEntriesOf(language::KindOf(language::SECTION_GROUP));
  ASSERT_EQ(entries.size(), 7u);
  EXPECT_EQ(entries[0].identifier, 0x02000014u);
  EXPECT_EQ(entries[0].content, language::Content::kParent);
  EXPECT_EQ(entries[1].content, language::Content::kGroupName);
  EXPECT_TRUE(entries[2].is_required);
  EXPECT_EQ(entries[6].identifier, 0x05000005u);  // VALUE_EXIT
  EXPECT_FALSE(entries[6].is_required);
  const language::SectionKind& table = language::KindOf(language::SECTION_TABLE);
  const language::SectionKind& device = language::KindOf(language::SECTION_DEVICE);
  for (const std::uint32_t index_class : {0u, 0x03000000u, 0x05000000u}) {
    EXPECT_FALSE(language::HoldsIndices(table, index_class));
    EXPECT_EQ(language::HoldsIndices(device, index_class), index_class != 0);
  }
}

TEST(LanguageTest, PartsOfValues) {
  EXPECT_EQ(language::FindValueType(102).RoleOf(1), language::Role::kAction);
  EXPECT_EQ(language::FindValueType(5).RoleOf(9), language::Role::kOperand);
  EXPECT_EQ(language::FindValueType(4).RoleOf(4), language::Role::kNone);
  EXPECT_EQ(language::FindValueType(7).MostKept(), 5u);
  EXPECT_EQ(language::FindValueType(9).MostKept(), language::kAnyNumber);
  EXPECT_EQ(language::FindValueType(13).MostKept(), 1u);
}

TEST(LanguageTest, PartsOfSelectors) {
  const auto part = [](std::uint32_t type, std::uint32_t selector) -> std::string {
    for (const language::SelectorRow& row : language::kSelectorRows) {
      if (row.type == type && row.selector == selector) return row.part;
    }
    return "";
  };
  EXPECT_EQ(part(2, 0x40000), "Operand");
  EXPECT_EQ(part(2, 0x50000), "Result");
  EXPECT_EQ(part(3, 0x70000), "Args");
  EXPECT_EQ(part(9, 0xA0000), "BusType");
  EXPECT_EQ(part(7, 0x100000), "Args");
  EXPECT_EQ(part(102, 0x170000), "Second");
  EXPECT_EQ(part(language::kRepeaterType, 0x160000), "Count");
  EXPECT_EQ(part(language::kRepeaterType, 0x180000), "Args");
}

TEST(LanguageTest, Operators) {
  EXPECT_EQ(language::OperatorCode("pow"), 20u);
  EXPECT_EQ(language::OperatorCode("<="), 106u);
  EXPECT_EQ(language::OperatorCode(""), 0u);
  ASSERT_NE(language::FindOperator(10u), nullptr);
  EXPECT_EQ(language::FindOperator(10u)->text, "<<");
  EXPECT_EQ(language::FindOperator(11u), nullptr);
  EXPECT_FALSE(language::IsComparison(20));
  EXPECT_TRUE(language::IsComparison(101));
}

TEST(LanguageTest, Blocks) {
  const std::uint32_t bases[] = {0x03000000, 0x04000000, 0x05000000, 0x06000000, 0x11000000,
                                 0x12000000, 0x18000000, 0x1A000000, 0x1C000000, 0x1B000000};
  ASSERT_EQ(std::size(language::kBlocks), std::size(bases));
  for (std::size_t i = 0; i < std::size(bases); ++i) EXPECT_EQ(language::kBlocks[i].base, bases[i]);
  EXPECT_EQ(language::meta_format::NextBlock(255), 256u);
  EXPECT_EQ(language::meta_format::NextBlock(256), 272u);
}

TEST(LanguageTest, Paths) {
  EXPECT_EQ(language::BaseNameOf("a\\b/c.rux"), "b/c.rux");
  EXPECT_EQ(language::FolderOf("a\\b\\c.rux"), "a\\b\\");
  EXPECT_EQ(language::FolderOf("c.rux"), "");
  EXPECT_EQ(language::BaseNameOf("c.rux"), "c.rux");
  EXPECT_EQ(language::ToLibraryPath("a/b/c.rux"), "a\\b\\c.rux");
  EXPECT_EQ(language::ToLibraryPath("a\\b/c.rux"), "a\\b/c.rux");
  EXPECT_EQ(language::WithSlashes("a\\b/c.rux"), "a/b/c.rux");
}

TEST(LanguageTest, Words) {
  std::string bytes;
  language::AppendWords(bytes, {0x04030201, 0xFFFFFFFF});
  language::StoreWord(bytes, 4, 0x80);
  EXPECT_EQ(bytes, std::string("\1\2\3\4\x80\0\0\0", 8));
  EXPECT_EQ(language::LoadWord(bytes.data()), 0x04030201u);
}

}  // namespace
