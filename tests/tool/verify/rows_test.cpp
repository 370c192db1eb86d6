// Compiled files in which one fact is wrong: what the check finds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "compiled/meta.h"
#include "compiled/verify.h"
#include "ruxcomp/language/words.h"
#include "tests/support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

std::string ReadFile(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

// A block of meta_rows.txt, whose beginning says which form it is about.
struct Row {
  std::string name;
  Lines changes;
  Lines faults;
  bool may_have_more = false;
};

std::vector<Row> ReadRows(const std::string& name) {
  std::istringstream stream(ReadFile(fs::path(RUX_ROWS) / (name + "_rows.txt")));
  std::vector<Row> rows;
  bool is_inside = false;
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.front() == '#') continue;
    if (line.empty()) {
      is_inside = false;
    } else if (!std::exchange(is_inside, true)) {
      rows.push_back({line, {}, {}});
    } else if (line == "...") {
      rows.back().may_have_more = true;
    } else if (line.rfind("offset ", 0) == 0) {
      rows.back().faults.push_back(line);
    } else if (line != "sound") {
      rows.back().changes.push_back(line);
    }
  }
  return rows;
}

// The compiled files that bytes/full.sh writes.
std::string SampleFile(const std::string& name) {
  const TempFolder folder;
  const std::string command =
      "cd " + folder.path() + " && BOARDS=" RUX_BOARDS " sh -c '. \"$BOARDS/../bytes/full.sh\"'";
  return std::system(command.c_str()) == 0 ? folder.Read(name) : "";
}

void Change(const std::string& change, std::string& bytes) {
  std::istringstream stream(change);
  std::string word;
  stream >> word;
  if (word == "cut" || word == "append") {
    stream >> std::setbase(0) >> word;
    const std::size_t size = std::stoul(word, nullptr, 0);
    bytes.resize(change.front() == 'c' ? size : bytes.size() + size);
    return;
  }
  std::size_t at = std::stoul(word, nullptr, 0);
  std::size_t size = 4;
  while (stream >> word) {
    if (word == "byte") {
      size = 1;
      continue;
    }
    std::uint64_t number = std::stoull(word, nullptr, 0);
    for (std::size_t i = 0; i < size; ++i, number >>= 8) {
      bytes.at(at++) = static_cast<char>(number & 0xFF);
    }
  }
}

void TestRows(const std::string& form, const std::string& sample) {
  const std::string sound = SampleFile(sample);
  ASSERT_FALSE(sound.empty());
  ASSERT_TRUE(rux::compiled::Verify(sound).empty());
  const std::vector<Row> rows = ReadRows(form);
  ASSERT_FALSE(rows.empty());
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::string bytes = sound;
    for (const std::string& change : row.changes) Change(change, bytes);
    EXPECT_NE(bytes, sound);
    const rux::compiled::Faults faults = rux::compiled::Verify(bytes);
    Lines found;
    for (const rux::compiled::Fault& fault : faults.list())
      found.push_back(rux::compiled::FaultText(fault));
    if (row.may_have_more && found.size() > row.faults.size()) found.resize(row.faults.size());
    EXPECT_EQ(found, row.faults);
  }
}

// What no row can say.
const std::string kTooManyItems =
    "offset 0x3F4, table 0, length: there are more than 16777216 items";
const std::string kForeign = "offset 0x0, header, magic: this is not a meta file";

// There are indices for that many items.
TEST(VerifyRows, TablesHaveNoMoreItemsThanThereAreIndices) {
  std::string bytes = SampleFile("full.meta");
  constexpr std::uint32_t kItems = 0x1000010;
  bytes.insert(0x402, kItems, '\0');  // after the names of the properties
  for (std::size_t slot = 0x84; slot < 0xA8; slot += 4) {
    const std::uint32_t offset = ruxcomp::language::LoadWord(&bytes[slot]) + kItems;
    Change(std::to_string(slot) + ' ' + std::to_string(offset), bytes);
  }
  const rux::compiled::Faults faults = rux::compiled::Verify(bytes);
  ASSERT_FALSE(faults.empty());
  EXPECT_EQ(rux::compiled::FaultText(faults.list().front()), kTooManyItems);
}

TEST(VerifyRows, OtherFilesAreNotDecoded) {
  rux::compiled::Faults faults;
  rux::compiled::DecodeMeta(SampleFile("full.metad"), faults);
  ASSERT_FALSE(faults.empty());
  EXPECT_EQ(rux::compiled::FaultText(faults.list().front()), kForeign);
}

TEST(VerifyRows, OfMetaFiles) { TestRows("meta", "full.meta"); }
TEST(VerifyRows, OfDebugMetaFiles) { TestRows("debug", "full.metad"); }

// The arguments of a call, from after its opening parenthesis on.
Lines ArgumentsAt(const std::string& source, std::size_t at) {
  Lines arguments(1);
  bool is_quoted = false;
  for (int depth = 1; at < source.size(); ++at) {
    const char c = source[at];
    if (c == '"' && source[at - 1] != '\\') is_quoted = !is_quoted;
    if (!is_quoted && (c == '(' || c == '{')) ++depth;
    if (!is_quoted && (c == ')' || c == '}') && --depth == 0) break;
    if (!is_quoted && depth == 1 && c == ',') {
      arguments.emplace_back();
    } else if (is_quoted || std::isspace(static_cast<unsigned char>(c)) == 0) {
      arguments.back() += c;
    }
  }
  return arguments;
}

// What the reason of a fault looks like that a format makes.
std::regex ReasonOf(const std::string& format) {
  static const std::regex place(R"(\{[^}]*\})");
  static const std::regex special(R"([.*()?\[\]])");
  const std::string escaped = std::regex_replace(format, special, R"(\$&)");
  return std::regex(".*: " + std::regex_replace(escaped, place, ".*"));
}

// The formats of the reasons that a source file reports faults with.
Lines ReasonsIn(const std::string& source) {
  static const std::regex call(R"(\b(Report\w*|Fail)\()");
  Lines reasons;
  for (std::sregex_iterator match(source.begin(), source.end(), call), end; match != end; ++match) {
    const auto begin = static_cast<std::size_t>(match->position() + match->length());
    const Lines arguments = ArgumentsAt(source, begin);
    // Behind the field and its offset.
    for (std::size_t i = 2; i < arguments.size(); ++i) {
      if (arguments[i].front() != '"') continue;
      static const std::regex quote(R"(\\(")|")");
      reasons.push_back(std::regex_replace(arguments[i], quote, "$1"));
      break;
    }
  }
  return reasons;
}

TEST(VerifyRows, EveryReasonHasARow) {
  Lines expected = {kTooManyItems, kForeign};
  for (const char* form : {"meta", "debug"}) {
    for (const Row& row : ReadRows(form)) {
      expected.insert(expected.end(), row.faults.begin(), row.faults.end());
    }
  }
  std::size_t count = 0;
  for (const char* folder : {"compiled", "include/ruxcomp/file", "include/ruxcomp/verify"}) {
    for (const fs::directory_entry& file : fs::directory_iterator(fs::path(RUX_SOURCES) / folder)) {
      for (const std::string& reason : ReasonsIn(ReadFile(file.path()))) {
        ++count;
        const std::regex wanted = ReasonOf(reason);
        EXPECT_TRUE(
            std::any_of(expected.begin(), expected.end(),
                        [&](const std::string& fault) { return std::regex_match(fault, wanted); }))
            << file.path().filename() << ": " << reason;
      }
    }
  }
  EXPECT_GT(count, 50u);
}

}  // namespace
