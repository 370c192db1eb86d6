#include "reader/texts.h"

#include <map>
#include <utility>

#include "ruxcomp/language/paths.h"

namespace reader {
namespace {

// Never destroyed: a host may open scripts until its very end.
std::map<std::string, Texts::Text>& Table() {
  static auto& table = *new std::map<std::string, Texts::Text>;
  return table;
}

}  // namespace

void Texts::Put(const std::string& path, std::string bytes) {
  static std::uint64_t last_id = 0;
  const auto [place, is_new] = Table().try_emplace(path, Text{path, last_id + 1, {}});
  if (is_new) ++last_id;
  place->second.bytes = std::move(bytes);
}

bool Texts::Remove(const std::string& path) { return Table().erase(path) != 0; }

void Texts::Clear() { Table().clear(); }

const Texts::Text* Texts::Find(const std::string& path) {
  if (Table().empty()) return nullptr;
  return ruxcomp::language::FindByPath(path, [](const std::string& candidate) -> const Text* {
    const auto found = Table().find(candidate);
    return found == Table().end() ? nullptr : &found->second;
  });
}

}  // namespace reader
