#include "reader/texts.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "ruxcomp/language/paths.h"

namespace ruxcomp::reader {
namespace {

using Table = std::map<std::string, Texts::Text>;

// Null while there are no texts. A plain pointer: a host may open scripts until its very end, and a
// plug-in, which has no texts, leaves nothing when it is unloaded.
Table* g_table = nullptr;
std::uint64_t g_last_id = 0;

}  // namespace

void Texts::Put(const std::string& path, std::string bytes) {
  if (g_table == nullptr) g_table = new Table;
  const auto [place, is_new] = g_table->try_emplace(path, Text{path, g_last_id + 1, {}});
  if (is_new) ++g_last_id;
  place->second.bytes = std::move(bytes);
}

bool Texts::Remove(const std::string& path) {
  const bool was_there = g_table != nullptr && g_table->erase(path) != 0;
  if (was_there && g_table->empty()) Clear();
  return was_there;
}

void Texts::Clear() {
  delete g_table;
  g_table = nullptr;
}

const Texts::Text* Texts::Find(const std::string& path) {
  if (g_table == nullptr) return nullptr;
  return ruxcomp::language::FindByPath(path, [](const std::string& candidate) -> const Text* {
    const auto found = g_table->find(candidate);
    return found == g_table->end() ? nullptr : &found->second;
  });
}

}  // namespace ruxcomp::reader
