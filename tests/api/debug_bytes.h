// Debug meta files in tests: spelled out record by record, written, loaded, and loaded in processes
// of their own.
#ifndef TESTS_API_DEBUG_BYTES_H_
#define TESTS_API_DEBUG_BYTES_H_

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/host.h"
#include "tests/support/own_process.h"
#include "tests/support/script_test.h"

// Identifiers of the source model.
constexpr std::uint32_t kPropertySection = 0x20000002;
constexpr std::uint32_t kGroupSection = 0x20000004;
constexpr std::uint32_t kSensorSection = 0x20000005;
constexpr std::uint32_t kActionSection = 0x20000007;
constexpr std::uint32_t kGlobalSection = 0x2000000A;
constexpr std::uint32_t kRepeaterSection = 0x2000000B;
constexpr std::uint32_t kDefineSection = 0x2000000C;
constexpr std::uint32_t kIncludeSection = 0x2000000E;

constexpr std::uint32_t kWordEntry = 0x10010001;  // a defined word
constexpr std::uint32_t kParentEntry = 0x10020014;
constexpr std::uint32_t kNameEntry = 0x10020015;
constexpr std::uint32_t kPropertyEntry = 0x10020017;  // an entry of a PROPERTY section
constexpr std::uint32_t kFileEntry = 0x10020019;
constexpr std::uint32_t kIdEntry = 0x10028008;
constexpr std::uint32_t kSensorsEntry = 0x10048001;
constexpr std::uint32_t kValueEntry = 0x10080000;
constexpr std::uint32_t kGlobalEntry = 0x10080001;
constexpr std::uint32_t kRepeaterEntry = 0x10100001;

using Texts = std::vector<std::string>;

inline std::string Numbers(std::initializer_list<std::uint32_t> numbers) {
  return ByteString().Words(numbers).str();
}

// A text, or a record inside another: its length and its bytes.
inline std::string Counted(const std::string& bytes) {
  return Numbers({static_cast<std::uint32_t>(bytes.size())}) + bytes;
}

inline std::string Fields(const Texts& texts) {
  std::string bytes;
  for (const std::string& text : texts) bytes += Counted(text);
  return bytes;
}

inline std::string List(const Texts& items) {
  return Numbers({static_cast<std::uint32_t>(items.size())}) + Fields(items);
}

// The fields that sections and entries share. The first one of a file is followed by the List of
// the source files.
inline std::string Object(std::uint32_t identifier, std::uint32_t notation, std::uint32_t line,
                          std::uint32_t file, const std::string& name) {
  return Numbers({identifier, notation, line, file}) + Counted(name);
}

inline std::string Entry(const std::string& object, const std::string& payload) {
  return Counted(object) + Counted(payload);
}

// An entry of a kind that the script did not give.
inline std::string Template(std::uint32_t identifier, std::uint32_t notation) {
  return Entry(Object(identifier, notation, 0, 0, ""), Numbers({0}));
}

inline std::string Section(const std::string& object, const Texts& entries) {
  return Counted(object) + List(entries);
}

inline std::string StringPayload(std::uint32_t identifier, const std::string& text) {
  return Numbers({identifier}) + Counted(text);
}

inline std::string ValuePayload(std::uint32_t identifier, std::uint32_t code,
                                const std::string& type, const std::string& body) {
  return Numbers({identifier}) + Counted(Numbers({code}) + Counted(type) + body);
}

// A PROPERTY section in line 3, and an entry of it in line 4.
inline std::string PropertyRecord(const std::string& list, const Texts& entries) {
  return Section(Object(kPropertySection, 2, 3, 0, "PROPERTY") + list, entries);
}
inline std::string PropertyText(const std::string& name, const std::string& text) {
  return Entry(Object(kPropertyEntry, 10, 4, 0, name), StringPayload(kPropertyEntry, text));
}

// A whole file, creation time 0: the defined words, and per kind its section records.
using DefinedWords = std::vector<std::pair<std::string, std::uint32_t>>;
inline std::string DebugMeta(const DefinedWords& words, const std::vector<Texts>& kinds,
                             std::uint32_t version = 0x01000000) {
  ByteString bytes;
  bytes.Terminated("MORV RUX metaD.").Words({version, 0}).ZerosUpTo(128);
  bytes.Words({static_cast<std::uint32_t>(words.size())});
  for (const auto& [name, value] : words) bytes.Text(Counted(name)).Words({value});
  bytes.Words({static_cast<std::uint32_t>(kinds.size())});
  for (const Texts& sections : kinds) bytes.Text(List(sections));
  return bytes.str();
}

// The file with another number at that offset.
inline std::string WithNumber(const std::string& file, std::size_t offset, std::uint32_t number) {
  return std::string(file).replace(offset, 4, Numbers({number}));
}

// A file with one PROPERTY section of one entry, A in line 2 of "board.rux", with this payload.
inline std::string OneEntry(std::uint32_t identifier, const std::string& payload) {
  return DebugMeta({},
                   {{Section(Object(kPropertySection, 2, 1, 0, "PROPERTY") + List({"board.rux"}),
                             {Entry(Object(identifier, 10, 2, 0, "A"), payload)})}});
}

class DebugTest : public ScriptTest {
 protected:
  // Reads and checks the script "board.rux", whatever the checks find, and writes the debug meta
  // file; returns its bytes.
  std::string CompileD(const std::string& text) {
    Parse(text);
    CheckModel();
    return OutputD();
  }

  // Writes the debug meta file; returns its bytes with the four of the creation time set to zero.
  std::string OutputD() {
    host::TakeMessages();
    EXPECT_EQ(gccOutputD(Path("board.metad")), 1u);
    EXPECT_EQ(host::TakeMessages(), Lines{});
    std::string bytes = ReadAll("board.metad");
    EXPECT_GE(bytes.size(), 136u);
    return bytes.replace(20, 4, 4, '\0');
  }

  // Writes a file of those bytes and loads it. "1" or "0": what gdInit answers; otherwise the text
  // of the out-of-range error that it raises.
  std::string Load(const std::string& bytes, tagMETAFILEINFO* info = nullptr) {
    Write("hand.metad", bytes);
    ExpectUnsound("board.metad");  // written again, it is as odd as it was
    try {
      return std::to_string(gdInit(Path("hand.metad"), info));
    } catch (const std::out_of_range& error) {
      return error.what();
    }
  }

  // The List of source files of a script that includes none.
  std::string BoardOnly() const { return List({ScriptPath("board.rux")}); }
};

#define EXPECT_SAME_BYTES(actual, expected) EXPECT_EQ(HexDump(actual), HexDump(expected))

#endif  // TESTS_API_DEBUG_BYTES_H_
