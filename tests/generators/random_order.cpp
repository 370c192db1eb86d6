#include "tests/generators/random_order.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <string>
#include <utility>

namespace {

// Puts those that are chosen in their old order, on the places that they have.
template <class IsChosen>
void SortPlaces(std::vector<std::size_t>& places, IsChosen is_chosen) {
  std::vector<std::size_t> chosen;
  std::copy_if(places.begin(), places.end(), std::back_inserter(chosen), is_chosen);
  std::sort(chosen.begin(), chosen.end());
  auto next = chosen.begin();
  for (std::size_t& place : places) {
    if (is_chosen(place)) place = *next++;
  }
}

}  // namespace

void ShuffleSections(Random& random, std::vector<RandomSection>& sections) {
  std::vector<std::size_t> places(sections.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  random.Shuffle(places);
  const auto name = [&](std::size_t place) -> const std::string& { return sections[place].name; };
  SortPlaces(places, [&](std::size_t place) { return name(place) == "GROUP"; });
  SortPlaces(places,
             [&](std::size_t place) { return name(place) == "DEFINE" || name(place) == "IFDEF"; });
  std::vector<RandomSection> shuffled;
  for (const std::size_t place : places) shuffled.push_back(std::move(sections[place]));
  sections = std::move(shuffled);
}
