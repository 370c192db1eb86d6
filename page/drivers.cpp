#include "page/drivers.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "page/contents.h"
#include "page/effects.h"
#include "page/html.h"
#include "ruxcomp/language/entries.h"
#include "support/ascii.h"

namespace rux::page {
namespace {

// FAN of FAN3_A and of SET_ALL_FANS: words of three letters and more, in the singular.
std::set<std::string> WordsOf(const std::string& name) {
  constexpr std::size_t kShortest = 3;
  std::set<std::string> words;
  std::string word;
  for (const char c : name + '_') {
    if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) {
      word += support::ToUpper(c);
      continue;
    }
    if (word.size() > kShortest && word.back() == 'S') word.pop_back();
    if (word.size() >= kShortest) words.insert(word);
    word.clear();
  }
  return words;
}

std::optional<Thing> ParentOf(const Contents& contents, Thing thing) {
  for (const browse::Link* link : contents.relations().From(thing)) {
    if (link->key == language::KeywordOf(language::ENTRY_PARENT)) return link->to;
  }
  return std::nullopt;
}

// Whether the action is one of them: it has one of the words, and something else that is measured
// decides it.
bool WriteDriver(const Contents& contents, const Effect& effect, Thing group, Thing sensor,
                 const std::set<std::string>& words, Html& out) {
  const std::set<std::string> own = WordsOf(NameOf(contents.At(effect.action)));
  const auto common = std::find_if(own.begin(), own.end(),
                                   [&](const std::string& word) { return words.count(word) > 0; });
  const auto run =
      std::find_if(effect.runs.begin(), effect.runs.end(), [&](const Effect::Run& some) {
        const bool is_own =
            std::find(some.deciders.begin(), some.deciders.end(), sensor) != some.deciders.end();
        return !some.deciders.empty() && !is_own;
      });
  if (common == own.end() || run == effect.runs.end()) return false;
  out << "<p><i>likely driven by</i> ";
  WriteLink(contents, effect.action, out);
  out << " <i>run by</i> ";
  WriteLink(contents, run->call->from, out);
  out << " <i>decided by</i> ";
  WriteDeciders(contents, effect, *run, out);
  out << " <small>(both are called " << Text{*common} << ", and the group ";
  WriteLink(contents, group, out);
  out << " runs it)</small></p>";
  return true;
}

}  // namespace

void WriteDrivers(const Contents& contents, const Effects& effects, Thing thing, Html& out) {
  constexpr int kMostGroups = 64;  // those of a damaged machine may contain each other
  constexpr std::size_t kMostEffects = 32;
  if (!contents.Is(thing, language::SECTION_SENSOR)) return;
  const std::set<std::string> words = WordsOf(NameOf(contents.At(thing)));
  std::optional<Thing> group = ParentOf(contents, thing);
  for (int i = 0; group && i < kMostGroups; ++i, group = ParentOf(contents, *group)) {
    const std::vector<const Effect*> run = effects.RunBy(*group);
    bool is_found = false;
    for (std::size_t j = 0; j < run.size() && j < kMostEffects; ++j)
      is_found = WriteDriver(contents, *run[j], *group, thing, words, out) || is_found;
    if (is_found) return;
  }
}

}  // namespace rux::page
