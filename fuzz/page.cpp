// A meta file: of what is sound, a page is written that shows what no test covers. Every link in it
// leads to a card, and no text of the machine is markup.
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cases/case.h"
#include "fuzz/sound_machine.h"
#include "fuzz/target.h"
#include "machine/machine.h"
#include "page/contents.h"
#include "page/document.h"
#include "profile/profile.h"
#include "support/safe_text.h"

namespace {

using fuzz::Expect;
using rux::machine::Machine;

// The numbers that follow each `lead`.
std::set<std::string> NumbersAfter(std::string_view page, std::string_view lead) {
  std::set<std::string> numbers;
  for (std::size_t at = page.find(lead); at != std::string_view::npos; at = page.find(lead, at)) {
    at += lead.size();
    std::size_t end = at;
    while (end < page.size() && std::isdigit(static_cast<unsigned char>(page[end])) != 0) ++end;
    if (end > at) numbers.emplace(page.substr(at, end - at));
  }
  return numbers;
}

// Elements that the parts of a page consist of; all others would come from a text.
bool IsOwn(std::string_view name) {
  static const std::set<std::string_view> names = {
      "a",       "abbr", "article", "b",     "caption", "code",       "dd",     "del",
      "details", "div",  "dl",      "dt",    "em",      "figcaption", "figure", "h2",
      "h3",      "h4",   "i",       "ins",   "li",      "noscript",   "ol",     "p",
      "path",    "pre",  "section", "small", "span",    "summary",    "svg",    "table",
      "tbody",   "td",   "text",    "th",    "thead",   "tr",         "ul",     "wbr"};
  return names.find(name) != names.end();
}

void ExpectOwnElements(std::string_view main) {
  for (std::size_t at = main.find('<'); at != std::string_view::npos; at = main.find('<', at)) {
    ++at;
    if (main[at] == '/') ++at;
    Expect(IsOwn(main.substr(at, main.find_first_of(" >", at) - at)), "no element is a text's");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::optional<Machine> machine = fuzz::SoundMachineOf(std::string(data, data + size));
  if (!machine) return 0;
  rux::page::Background background;
  background.tests.emplace(*machine, rux::profile::Profile{}, std::vector<rux::cases::CaseFile>{});
  const std::string page = rux::page::PageOf(rux::page::Contents(*machine, std::move(background)));
  Expect(rux::support::AreSafeLines(page), "no text of a machine controls anything");
  const std::size_t begin = page.find("<main>");
  const std::size_t end = page.rfind("</main>");
  const std::string_view main = std::string_view(page).substr(begin, end - begin).substr(6);
  ExpectOwnElements(main);
  const std::set<std::string> cards = NumbersAfter(main, "<article id=t");
  for (const std::string& link : NumbersAfter(main, "href=#t"))
    Expect(cards.count(link) == 1, "a link leads to a card");
  return 0;
}
