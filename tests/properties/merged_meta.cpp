#include "tests/properties/merged_meta.h"

#include <map>

#include "tests/support/bytes.h"

namespace {

constexpr std::uint32_t kClassMask = 0xFF000000;
constexpr std::uint32_t kNumbers = 0x11000000;
constexpr std::uint32_t kStrings = 0x12000000;
constexpr std::uint32_t kCells = 0x1B000000;

// Keys as their block holds them: a number is its word, a text has its terminating zero.
using Keys = std::vector<std::string>;

Keys KeysOf(const rux::compiled::CompiledTable& table) {
  Keys keys;
  for (const std::string& text : table.texts) keys.push_back(text + '\0');
  for (const std::uint32_t number : table.numbers)
    keys.push_back(ByteString().Words({number}).str());
  return keys;
}

class Merger {
 public:
  Merger(const rux::compiled::CompiledMeta& before, const rux::compiled::CompiledMeta& alone)
      : alone_(alone) {
    for (const rux::compiled::CompiledTable& table : before.tables) {
      for (const std::string& key : KeysOf(table)) IndexOf(table.base, key);
    }
    for (const rux::compiled::CompiledTable& table : alone.tables) {
      old_keys_[table.base] = KeysOf(table);
      if (table.base == kNumbers || table.base == kStrings) continue;
      for (const std::string& key : KeysOf(table)) IndexOf(table.base, key);
    }
  }

  std::string Merge(const std::vector<std::uint32_t>& kinds) {
    const std::string sections = Sections(kinds);  // makes the last indices
    std::string body = std::string(256, '\0') + sections;
    ByteString directory;
    for (const rux::compiled::CompiledTable& table : alone_.tables) {
      body.resize((body.size() / 16 + 1) * 16);
      directory.Words({static_cast<std::uint32_t>(body.size())});
      const std::string block = Block(table);
      body += ByteString().Words({table.base, static_cast<std::uint32_t>(block.size())}).str();
      body += block;
    }
    ByteString head;
    head.Terminated("MORV RUX meta.").Zeros(1).Words({0x01000000, 0}).ZerosUpTo(128);
    head.Text(directory.str()).ZerosUpTo(256);
    return body.replace(0, head.size(), head.str());
  }

 private:
  struct Table {
    std::string block;
    std::map<std::string, std::uint32_t> indices;
  };

  std::uint32_t IndexOf(std::uint32_t base, const std::string& key) {
    Table& table = tables_[base];
    const auto next = base + static_cast<std::uint32_t>(table.indices.size());
    const auto [found, is_new] = table.indices.emplace(key, next);
    if (is_new) table.block += key;
    return found->second;
  }

  // An index of the file alone as one of the merged tables; others are what they are.
  std::uint32_t Merged(std::uint32_t index) {
    const auto keys = old_keys_.find(index & kClassMask);
    if (keys == old_keys_.end() || keys->first == kCells) return index;
    return IndexOf(keys->first, keys->second.at(index & ~kClassMask));
  }

  std::string Sections(const std::vector<std::uint32_t>& kinds) {
    ByteString bytes;
    bytes.Words({static_cast<std::uint32_t>(alone_.sections.size())});
    for (const std::uint32_t kind : kinds) {
      for (const rux::compiled::CompiledSection& section : alone_.sections) {
        if ((section.identifier & ~kClassMask) != (kind & ~kClassMask)) continue;
        bytes.Words({section.identifier, static_cast<std::uint32_t>(section.entries.size())});
        for (const rux::compiled::CompiledEntry& entry : section.entries) {
          const auto count = static_cast<std::uint32_t>(entry.values.size());
          bytes.Words({Merged(entry.identifier), count});
          for (const std::uint32_t value : entry.values) bytes.Words({Merged(value)});
        }
      }
    }
    return bytes.str();
  }

  // The cells are those of the last run alone.
  std::string Block(const rux::compiled::CompiledTable& table) {
    if (table.base != kCells) return tables_[table.base].block;
    std::string block;
    for (const rux::compiled::TableCells& cells : table.cells)
      block.append(cells.begin(), cells.end());
    return block;
  }

  const rux::compiled::CompiledMeta& alone_;
  std::map<std::uint32_t, Keys> old_keys_;
  std::map<std::uint32_t, Table> tables_;
};

}  // namespace

std::string MergedMeta(const rux::compiled::CompiledMeta& before,
                       const rux::compiled::CompiledMeta& alone,
                       const std::vector<std::uint32_t>& kinds) {
  return Merger(before, alone).Merge(kinds);
}
