// Meta files in tests: put together by hand, compiled from models that have problems, loaded, and
// taken apart again.
#ifndef TESTS_API_META_BYTES_H_
#define TESTS_API_META_BYTES_H_

#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/host.h"
#include "tests/support/script_test.h"

using Words = std::vector<std::uint32_t>;

// The first 256 bytes of a meta file, creation time 0, with the offsets of its table blocks.
inline ByteString MetaHeader(std::initializer_list<std::uint32_t> directory) {
  ByteString bytes;
  bytes.Terminated("MORV RUX meta.").Zeros(1);
  bytes.Words({0x01000000, 0});  // version, creation time
  bytes.ZerosUpTo(128).Words(directory);
  return bytes.ZerosUpTo(256);
}

// A meta file of sections and blocks in the order of the calls, also one that no script compiles
// to. The directory lists just the blocks that were added.
class MetaBytes {
 public:
  MetaBytes& Section(std::uint32_t identifier, const std::vector<tagGCENTRY>& entries) {
    ++count_;
    sections_.Words({identifier, static_cast<std::uint32_t>(entries.size())});
    for (const tagGCENTRY& entry : entries) {
      sections_.Words({entry.identifier, static_cast<std::uint32_t>(entry.values.size())});
      for (const std::uint32_t value : entry.values) sections_.Words({value});
    }
    return *this;
  }

  MetaBytes& Block(std::uint32_t base, std::uint32_t length, const std::string& payload) {
    blocks_.push_back(ByteString().Words({base, length}).Text(payload).str());
    return *this;
  }
  MetaBytes& Block(std::uint32_t base, const std::string& payload) {
    return Block(base, static_cast<std::uint32_t>(payload.size()), payload);
  }
  MetaBytes& Strings(std::uint32_t base, const std::vector<std::string>& keys) {
    ByteString payload;
    for (const std::string& key : keys) payload.Terminated(key);
    return Block(base, payload.str());
  }
  MetaBytes& Numbers(const Words& numbers) {
    ByteString payload;
    for (const std::uint32_t number : numbers) payload.Words({number});
    return Block(0x11000000, payload.str());
  }

  // At most 32 blocks: there the sections begin.
  std::string str() const {
    ByteString body = MetaHeader({}).Words({count_}).Text(sections_.str());
    ByteString directory;
    for (const std::string& block : blocks_) {
      body.ZerosUpTo((body.size() / 16 + 1) * 16);
      directory.Words({static_cast<std::uint32_t>(body.size())});
      body.Text(block);
    }
    return body.str().substr(0, 128) + directory.str() + body.str().substr(128 + directory.size());
  }

 private:
  std::uint32_t count_ = 0;
  ByteString sections_;
  std::vector<std::string> blocks_;
};

// Words as a person reads them: "0x1E000001 0x11000000".
inline std::string Hex(const Words& words) {
  std::string text;
  char piece[16];
  for (const std::uint32_t word : words) {
    std::snprintf(piece, sizeof piece, "%s0x%08X", text.empty() ? "" : " ", word);
    text += piece;
  }
  return text;
}

// A looked-up index: "0x11000000 number 5", "0x12000000 string lab" or "0xFFFFFFFF nothing".
inline std::string Show(const tagTBLDATA& data) {
  const std::string index = Hex({data.index});
  switch (data.kind) {
    case 0:
      return index + " nothing";
    case 1:
      return index + " number " + std::to_string(data.data.number);
    case 2:
      return index + " string " + data.data.string;
    default:
      return index + " of unknown kind " + std::to_string(data.kind);
  }
}

// The entry identifiers of a section, and the values of an entry, in order.
inline Words EntryIds(GCSECTION section) {
  Words ids(gcGetEntryCount(section));
  for (std::uint32_t i = 0; i < ids.size(); ++i) gcGetEntryByIndex(section, i, &ids[i]);
  return ids;
}
inline Words ValuesOf(GCENTRY entry) {
  Words values(gcGetValueCount(entry));
  for (std::uint32_t i = 0; i < values.size(); ++i) values[i] = gcGetValueByIndex(entry, i).index;
  return values;
}
// The values of the first entry with that identifier in the first section of that kind.
inline Words ValuesOf(std::uint32_t section, std::uint32_t entry) {
  return ValuesOf(gcGetEntryByType(gcGetSectByIndex(section, 0), entry));
}

class MetaTest : public ScriptTest {
 protected:
  void TearDown() override {
    gcUnInit();
    ScriptTest::TearDown();
  }

  // Like Compile, whatever gccCheck finds: hosts may write a model that has problems.
  std::string CompileAnyway(const std::string& text) {
    Parse(text);
    CheckModel();
    host::TakeMessages();
    EXPECT_EQ(gccOutput(Path("board.meta")), 1u);
    return ReadAll("board.meta").replace(20, 4, 4, '\0');
  }

  // Writes a meta file of those bytes and loads it; returns what gcInit answers.
  std::uint32_t Load(const std::string& bytes) {
    Write("hand.meta", bytes);
    return gcInit(Path("hand.meta"));
  }

  // CompileAnyway, the end of the compile run, and gcInit.
  void LoadScript(const std::string& text) {
    CompileAnyway(text);
    gccCompEnd();
    ASSERT_EQ(gcInit(Path("board.meta")), 1u);
  }
};

#endif  // TESTS_API_META_BYTES_H_
