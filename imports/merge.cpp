#include "imports/merge.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/one_scale.h"
#include "imports/script_lines.h"
#include "imports/script_text.h"
#include "ruxcomp/language/entries.h"

namespace rux::imports {
namespace {

namespace language = ruxcomp::language;

constexpr std::string_view kListKey = language::KeywordOf(language::ENTRY_SENSORS);

// The same line or part in each of the texts; null: the text does not have it.
template <class Unit>
struct Triple {
  const Unit* base;
  const Unit* edited;
  const Unit* written;

  bool IsSame(const Unit* a, const Unit* b) const {
    return a == nullptr || b == nullptr ? a == b : *a == *b;
  }
  bool is_edited() const { return !IsSame(edited, base) && !IsSame(edited, written); }
  bool is_rewritten() const { return !IsSame(written, base) && !IsSame(edited, written); }
};

template <class Unit>
std::map<std::string_view, const Unit*> ByKey(const std::vector<Unit>& units) {
  std::map<std::string_view, const Unit*> by_key;
  for (const Unit& unit : units) by_key.emplace(unit.key, &unit);
  return by_key;
}

template <class Unit>
const Unit* FindIn(const std::map<std::string_view, const Unit*>& units, std::string_view key) {
  const auto found = units.find(key);
  return found == units.end() ? nullptr : found->second;
}

// All of the three, in the order of the edited text: what is new in the written one comes after
// what it follows there, what was taken out of the edited one comes last.
template <class Unit>
std::vector<Triple<Unit>> Aligned(const std::vector<Unit>& base, const std::vector<Unit>& edited,
                                  const std::vector<Unit>& written) {
  const auto in_base = ByKey(base);
  const auto in_edited = ByKey(edited);
  const auto in_written = ByKey(written);
  std::vector<const Unit*> first;                             // new before all others
  std::map<const Unit*, std::vector<const Unit*>> following;  // new after one of the edited text
  std::vector<const Unit*>* place = &first;
  for (const Unit& unit : written) {
    const Unit* const found = FindIn(in_edited, unit.key);
    if (found != nullptr)
      place = &following[found];
    else if (FindIn(in_base, unit.key) == nullptr)
      place->push_back(&unit);
  }
  std::vector<Triple<Unit>> triples;
  triples.reserve(base.size() + edited.size());
  for (const Unit* const unit : first) triples.push_back({nullptr, nullptr, unit});
  for (const Unit& unit : edited) {
    triples.push_back({FindIn(in_base, unit.key), &unit, FindIn(in_written, unit.key)});
    for (const Unit* const added : following[&unit]) triples.push_back({nullptr, nullptr, added});
  }
  for (const Unit& unit : base) {
    if (FindIn(in_edited, unit.key) == nullptr)
      triples.push_back({&unit, nullptr, FindIn(in_written, unit.key)});
  }
  return triples;
}

// The numbers of "SENSORS = 1, 2, \ 3".
std::vector<std::string> NumbersIn(const ScriptLine* line) {
  std::vector<std::string> numbers;
  if (line == nullptr) return numbers;
  std::string number;
  for (const char c : line->meaning.substr(line->meaning.find('=') + 1) + ',') {
    if (c != ',' && c != ' ' && c != '\\') number += c;
    if (c != ',' || number.empty()) continue;
    numbers.push_back(std::move(number));
    number.clear();
  }
  return numbers;
}

// The numbers of the edited list, without those that the import takes out, with those that it adds.
std::string MergedList(const Triple<ScriptLine>& line) {
  const std::vector<std::string> before = NumbersIn(line.base);
  const std::vector<std::string> after = NumbersIn(line.written);
  const std::set<std::string> in_before(before.begin(), before.end());
  const std::set<std::string> in_after(after.begin(), after.end());
  std::vector<std::string> numbers;
  std::set<std::string> taken;
  for (const std::string& number : NumbersIn(line.edited)) {
    const bool is_taken_out = in_before.count(number) > 0 && in_after.count(number) == 0;
    if (!is_taken_out && taken.insert(number).second) numbers.push_back(number);
  }
  for (const std::string& number : after) {
    if (in_before.count(number) == 0 && taken.insert(number).second) numbers.push_back(number);
  }
  const std::string key(kListKey);
  return key + " =" + ListText(key.size(), numbers) + '\n';
}

class Merger {
 public:
  Merged Merge(const std::string& base, const std::string& edited, const std::string& written) {
    const std::vector<ScriptPart> in_base = PartsOf(base);
    const std::vector<ScriptPart> in_edited = PartsOf(edited);
    const std::vector<ScriptPart> in_written = PartsOf(written);
    for (const Triple<ScriptPart>& part : Aligned(in_base, in_edited, in_written)) MergePart(part);
    return std::move(merged_);
  }

 private:
  void Add(std::string_view text) {
    merged_.text += text;
    if (!text.empty() && text.back() != '\n') merged_.text += '\n';
    line_ += static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
  }
  void Add(const ScriptPart& part) {
    for (const ScriptLine& line : part.lines) Add(line.text);
  }

  void AddConflict(const ScriptLine* edited, const ScriptLine* written) {
    merged_.conflicts.push_back({line_, section_, edited == nullptr ? "" : edited->meaning,
                                 written == nullptr ? "" : written->meaning});
  }

  void MergePart(const Triple<ScriptPart>& part) {
    const ScriptPart& any = part.edited != nullptr    ? *part.edited
                            : part.written != nullptr ? *part.written
                                                      : *part.base;
    section_ = any.key.substr(0, any.key.find('\n'));
    if (part.edited != nullptr && part.written != nullptr) return MergeSection(part);
    const bool is_conflict = part.is_edited() && part.is_rewritten();
    if (is_conflict && part.edited == nullptr) {
      for (const ScriptLine& line : LinesNotIn(part.base, *part.written))
        AddConflict(nullptr, &line);
    }
    if (part.is_edited() && part.edited != nullptr) return Keep(part, is_conflict);
    if (part.is_edited() || part.written == nullptr) return;
    Separate();
    Add(*part.written);
  }

  // The edited section, where the import has none.
  void Keep(const Triple<ScriptPart>& part, bool is_conflict) {
    const std::vector<ScriptLine> changed =
        is_conflict ? LinesNotIn(part.base, *part.edited) : std::vector<ScriptLine>();
    // Where lines were only taken out, its title shows what is meant.
    if (is_conflict && changed.empty()) AddConflict(&part.edited->lines.front(), nullptr);
    auto next = changed.begin();
    for (const ScriptLine& line : part.edited->lines) {
      if (next != changed.end() && next->key == line.key) AddConflict(&*next++, nullptr);
      Add(line.text);
    }
  }

  // Those of the section that the other one does not have, or has otherwise.
  static std::vector<ScriptLine> LinesNotIn(const ScriptPart* other, const ScriptPart& section) {
    static const ScriptPart none = {};
    const auto in_other = ByKey((other == nullptr ? none : *other).lines);
    std::vector<ScriptLine> lines;
    for (const ScriptLine& line : section.lines) {
      const ScriptLine* const found = FindIn(in_other, line.key);
      if (!line.is_blank() && (found == nullptr || !(*found == line))) lines.push_back(line);
    }
    return lines;
  }

  void MergeSection(const Triple<ScriptPart>& part) {
    const SensorVersions versions{part.base, part.edited, part.written};
    keeps_limits_ = false;
    if (!HaveTwoScales(versions)) return MergeLines(part.base, *part.edited, *part.written);
    const std::optional<InOneScale> texts = BroughtToOneScale(versions);
    if (!texts) {
      keeps_limits_ = true;
      return MergeLines(part.base, *part.edited, *part.written);
    }
    const std::vector<ScriptPart> base = PartsOf(texts->base);
    MergeLines(&base.back(), PartsOf(texts->edited).back(), PartsOf(texts->written).back());
  }

  void MergeLines(const ScriptPart* base, const ScriptPart& edited, const ScriptPart& written) {
    static const ScriptPart none = {};
    const ScriptPart& before = base == nullptr ? none : *base;
    for (const auto& line : Aligned(before.lines, edited.lines, written.lines)) MergeLine(line);
  }

  void MergeLine(const Triple<ScriptLine>& line) {
    const ScriptLine* const kept = line.edited;
    if (!line.is_rewritten()) {
      if (kept != nullptr) Add(kept->text);
      return;
    }
    const bool is_kept_limit =
        keeps_limits_ && IsAboutLimits(line.written != nullptr ? *line.written : *line.base);
    if (!line.is_edited() && !is_kept_limit) {
      if (line.written != nullptr && !line.written->is_blank()) Add(line.written->text);
      return;
    }
    if (kept != nullptr && line.written != nullptr && kept->key == kListKey)
      return Add(MergedList(line));
    AddConflict(kept, line.written);
    if (kept != nullptr) Add(kept->text);
  }

  // An empty line between sections.
  void Separate() {
    const std::string& text = merged_.text;
    if (text.size() > 1 && text.substr(text.size() - 2) != "\n\n") Add("\n");
  }

  std::uint32_t line_ = 1;     // of what comes next
  std::string section_;        // that it is in, for conflicts
  bool keeps_limits_ = false;  // of the section, as they were edited
  Merged merged_;
};

}  // namespace

Merged Merge(const std::string& base, const std::string& edited, const std::string& written) {
  return Merger().Merge(base, edited, written);
}

}  // namespace rux::imports
