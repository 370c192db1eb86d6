#include "reader/texts.h"

#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "ruxcomp/language/paths.h"

namespace ruxcomp::reader {
namespace {

struct Table {
  std::map<std::string, Texts::Text> by_path;
  std::map<std::string, std::string> paths;  // by the whole names of the files
};

struct Free {
  void operator()(char* name) const { free(name); }
};

// Empty when there is no such file or folder.
std::string ResolvedPath(const std::string& path) {
  const std::unique_ptr<char, Free> name(realpath(path.c_str(), nullptr));
  return name == nullptr ? "" : name.get();
}

// The same for all paths of a file, which need not be there; empty when its folder is not.
std::string WholeName(const std::string& path) {
  std::string whole = ResolvedPath(path);
  if (!whole.empty()) return whole;
  const std::size_t slash = path.rfind('/');
  const bool has_folder = slash != std::string::npos;
  whole = ResolvedPath(has_folder ? path.substr(0, slash + 1) : ".");
  return whole.empty() ? whole : whole + '/' + path.substr(has_folder ? slash + 1 : 0);
}

// Null while there are no texts. A plain pointer: a host may open scripts until its very end, and a
// plug-in, which has no texts, leaves nothing when it is unloaded.
Table* g_table = nullptr;
std::uint64_t g_last_text = 0;

// Null while scripts are files.
Texts::Lookup* g_lookup = nullptr;

// Null when there is no text.
const Texts::Text* FindElsewhere(const std::string& path) {
  std::optional<std::string> bytes = (*g_lookup)(path);
  if (!bytes) return nullptr;
  Texts::Put(path, std::move(*bytes));
  return &g_table->by_path.at(path);
}

}  // namespace

void Texts::Put(const std::string& path, std::string bytes) {
  if (g_table == nullptr) g_table = new Table;
  const auto [place, is_new] = g_table->by_path.try_emplace(path, Text{path, g_last_text + 1, {}});
  if (is_new) ++g_last_text;
  place->second.bytes = std::move(bytes);
  const std::string whole = WholeName(path);
  if (!whole.empty()) g_table->paths.insert_or_assign(whole, path);
}

bool Texts::Remove(const std::string& path) {
  if (g_table == nullptr || g_table->by_path.erase(path) == 0) return false;
  for (auto each = g_table->paths.begin(); each != g_table->paths.end();) {
    each = each->second == path ? g_table->paths.erase(each) : std::next(each);
  }
  if (g_table->by_path.empty()) Clear();
  return true;
}

void Texts::Clear() {
  delete g_table;
  g_table = nullptr;
}

void Texts::ReplaceFiles(Lookup lookup) {
  delete g_lookup;
  g_lookup = lookup ? new Lookup(std::move(lookup)) : nullptr;
}

bool Texts::AreFilesReplaced() { return g_lookup != nullptr; }

const Texts::Text* Texts::Find(const std::string& path) {
  if (g_lookup != nullptr && g_table == nullptr) g_table = new Table;
  if (g_table == nullptr) return nullptr;
  const auto find = [](const std::string& candidate) -> const Text* {
    const auto found = g_table->by_path.find(candidate);
    return found == g_table->by_path.end() ? nullptr : &found->second;
  };
  if (const Text* text = ruxcomp::language::FindByPath(path, find)) return text;
  const std::string slashed = ruxcomp::language::WithSlashes(path);
  if (g_lookup != nullptr) return FindElsewhere(slashed);
  const auto other = g_table->paths.find(WholeName(slashed));
  return other == g_table->paths.end() ? nullptr : find(other->second);
}

}  // namespace ruxcomp::reader
