#include "support/nearest.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/ascii.h"
#include "support/safe_text.h"

namespace rux::support {
namespace {

constexpr std::size_t kMostShown = 5;   // names in a message
constexpr std::size_t kMostListed = 6;  // where nothing is near

std::string InCapitals(std::string text) {
  for (char& c : text) c = ToUpper(c);
  return text;
}

// How many characters must be changed, dropped, added or swapped with their neighbour.
std::size_t Distance(const std::string& a, const std::string& b) {
  // The rows of the matrix for two characters ago, for the last one, and for this one.
  std::vector<std::size_t> before_last(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::swap(before_last, last);
    std::swap(last, row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] =
          std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before_last[j - 2] + 1);
    }
  }
  return row[b.size()];
}

std::size_t LengthDifference(const std::string& a, const std::string& b) {
  return a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
}

bool HasSameCharacters(std::string a, std::string b) {
  std::sort(a.begin(), a.end());
  std::sort(b.begin(), b.end());
  return a == b;
}

// The one of the names that fits; null when none does, or several do.
template <class Fits>
const std::string* TheOnly(const std::vector<const std::string*>& names, Fits fits) {
  const std::string* only = nullptr;
  for (const std::string* name : names) {
    if (!fits(*name) || (only != nullptr && *only == *name)) continue;
    if (only != nullptr) return nullptr;
    only = name;
  }
  return only;
}

// "A, B or C", with `last` between the last two.
std::string Joined(const std::vector<std::string>& names, const char* last) {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) list += i + 1 < names.size() ? ", " : last;
    list += NameText(names[i]);
  }
  return list;
}

}  // namespace

bool IsSlipOf(const std::string& name, const std::string& written) {
  const std::string a = InCapitals(name);
  const std::string b = InCapitals(written);
  const auto digits_of = [](const std::string& text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), IsDigit);
    return digits;
  };
  if (digits_of(a) != digits_of(b)) return false;
  if (LengthDifference(a, b) == 1) return Distance(a, b) == 1;
  return HasSameCharacters(a, b);
}

std::vector<std::string> Nearest(const std::string& wanted,
                                 const std::vector<std::string>& candidates, std::size_t most) {
  const std::string goal = InCapitals(wanted);
  const std::size_t farthest = std::max<std::size_t>(2, goal.size() / 3);
  std::vector<std::pair<std::size_t, const std::string*>> near;
  for (const std::string& candidate : candidates) {
    if (LengthDifference(candidate, goal) > farthest) continue;
    const std::size_t distance = Distance(goal, InCapitals(candidate));
    // Of a misspelling, some of the characters are right.
    const bool is_near = distance <= farthest && distance < goal.size();
    if (is_near) near.emplace_back(distance, &candidate);
  }
  std::stable_sort(near.begin(), near.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  if (near.size() > most) near.resize(most);
  std::vector<std::string> names;
  names.reserve(near.size());
  for (const auto& [distance, name] : near) names.push_back(*name);
  return names;
}

std::optional<std::string> ClosestName(const std::string& wanted,
                                       const std::vector<std::string>& candidates,
                                       std::size_t farthest) {
  const std::string goal = InCapitals(wanted);
  if (goal.size() < 4) farthest = 1;
  std::vector<const std::string*> near;
  for (const std::string& candidate : candidates) {
    if (candidate == wanted || LengthDifference(candidate, goal) > farthest) continue;
    const std::size_t distance = Distance(goal, InCapitals(candidate));
    // A text without a character in common is not a misspelling.
    if (distance > farthest || distance >= std::max(candidate.size(), goal.size())) continue;
    if (distance < farthest) near.clear();
    farthest = distance;
    near.push_back(&candidate);
  }
  const auto any = [](const std::string&) { return true; };
  const auto same = [&](const std::string& name) {
    return HasSameCharacters(InCapitals(name), goal);
  };
  const auto begins_alike = [&](const std::string& name) {
    return !name.empty() && !wanted.empty() && name.front() == wanted.front();
  };
  const std::string* meant = TheOnly(near, any);
  if (meant == nullptr) meant = TheOnly(near, same);
  if (meant == nullptr) meant = TheOnly(near, begins_alike);
  return meant == nullptr ? std::nullopt : std::make_optional(*meant);
}

std::string NearText(const std::string& wanted, const std::vector<std::string>& candidates,
                     const std::string& lister) {
  if (candidates.empty()) return "; there are none";
  const std::vector<std::string> near = Nearest(wanted, candidates, kMostShown);
  if (!near.empty()) return "; did you mean " + Joined(near, " or ") + '?';
  if (candidates.size() <= kMostListed) return "; there are: " + Joined(candidates, ", ");
  return lister.empty() ? "" : "; " + lister;
}

}  // namespace rux::support
