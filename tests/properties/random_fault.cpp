#include "tests/properties/random_fault.h"

#include <algorithm>
#include <optional>
#include <set>

#include "tests/properties/number_reading.h"
#include "tests/properties/script_meaning.h"

namespace {

using Sections = std::vector<RandomSection>;
using Parts = std::vector<std::string>;
using Names = std::set<std::string>;

// An item by its place in the script.
struct ItemAt {
  std::size_t section = 0;
  std::size_t item = 0;

  const RandomSection& SectionIn(const Sections& sections) const { return sections[section]; }
  const RandomItem& In(const Sections& sections) const { return sections[section].items[item]; }
  RandomItem& In(Sections& sections) const { return sections[section].items[item]; }
};

std::string At(const Place& place) { return place.file + ':' + std::to_string(place.line); }

// A message about an entry: its place and names, then the text.
FaultMessages AboutEntry(ItemAt at, const std::string& text) {
  return [=](const Sections& sections) -> Parts {
    const RandomItem& item = at.In(sections);
    return {"Error[" + At(item.place) + "]: [" + at.SectionIn(sections).name + "]:" + item.key +
            text + '\n'};
  };
}

const Names kNumberKeys = {"TYPE",         "FLAG",         "SOUTHBRIDGE",  "NORTHBRIDGE",
                           "RUXLOOP",      "CHILDGROUP",   "ID",           "INITFLAG",
                           "CONTROLMASK",  "THEORY",       "THRESHOLD_FH", "THRESHOLD_WH",
                           "THRESHOLD_FL", "THRESHOLD_WL", "ARGNUMBER",    "PID"};
const Names kRequiredKeys = {"VERSION", "TYPE",     "MODEL",      "FLAG", "RUXLOOP",
                             "PARENT",  "NAME",     "CHILDGROUP", "ID",   "PID",
                             "SENSORS", "INITFLAG", "CONTROLMASK"};

bool HasWords(const std::string& section) { return section == "DEFINE" || section == "IFDEF"; }

bool IsValue(const RandomSection& section, const RandomItem& item) {
  static const Names without_values = {"DEFINE", "IFDEF", "PROPERTY", "REPEATER", "TABLE"};
  if (without_values.count(section.name) != 0) return false;
  return section.name == "GLOBAL" || item.key == "VALUE" || item.key.rfind("VALUE_", 0) == 0;
}

bool IsText(const RandomSection& section, const RandomItem& item) {
  return !IsValue(section, item) && !HasWords(section.name) && section.name != "REPEATER" &&
         item.key != "SENSORS";
}

// A required key of a section; SENSOR's VALUE is required, too, that of an ACTION is not.
bool IsRequired(const RandomSection& section, const RandomItem& item) {
  static const Names with_free_names = {"PROPERTY", "GLOBAL", "REPEATER"};
  if (HasWords(section.name) || with_free_names.count(section.name)) return false;
  return kRequiredKeys.count(item.key) != 0 || (section.name == "SENSOR" && item.key == "VALUE");
}

constexpr char kUnknownId[] = "4000000";

// Every fault answers nothing when the script has no place for it.
class FaultMaker {
 public:
  FaultMaker(Random& random, Sections& sections)
      : random_(random), sections_(sections), words_(MeaningOf(sections).words) {}

  FaultMessages Make() {
    using Fault = FaultMessages (FaultMaker::*)();
    static const std::vector<Fault> faults = {
        &FaultMaker::WrongName,       &FaultMaker::MissingEntry,      &FaultMaker::NoText,
        &FaultMaker::NoNumber,        &FaultMaker::WrongValue,        &FaultMaker::WrongValue,
        &FaultMaker::WrongValue,      &FaultMaker::WrongValue,        &FaultMaker::ShortRepetition,
        &FaultMaker::WrongCount,      &FaultMaker::UnknownParent,     &FaultMaker::UnknownGroup,
        &FaultMaker::UnknownPid,      &FaultMaker::UnknownSensor,     &FaultMaker::UnlistedSensor,
        &FaultMaker::SecondOfItsKind, &FaultMaker::SameName,          &FaultMaker::SameId,
        &FaultMaker::EntryTwice,      &FaultMaker::EntryInTwoSections};
    while (true) {
      if (FaultMessages messages = (this->*random_.Pick(faults))()) return messages;
    }
  }

 private:
  // A random one of the items for which `fits` holds.
  template <class Fits>
  std::optional<ItemAt> PickItem(Fits fits) {
    std::vector<ItemAt> found;
    for (std::size_t s = 0; s < sections_.size(); ++s) {
      for (std::size_t i = 0; i < sections_[s].items.size(); ++i) {
        if (fits(sections_[s], sections_[s].items[i])) found.push_back({s, i});
      }
    }
    if (found.empty()) return std::nullopt;
    return random_.Pick(found);
  }
  std::optional<ItemAt> PickItem(const std::string& section, const std::string& key) {
    return PickItem([&](const RandomSection& in, const RandomItem& item) {
      return in.name == section && item.key == key;
    });
  }

  // A word that is defined as that number.
  std::string WordFor(std::uint32_t number) const {
    return std::find_if(words_.begin(), words_.end(),
                        [&](const auto& word) { return word.second == number; })
        ->first;
  }

  // Gives the item that was found another value.
  FaultMessages Change(const std::optional<ItemAt>& at, const Parts& parts,
                       const std::string& text) {
    if (!at) return nullptr;
    at->In(sections_).parts = parts;
    return AboutEntry(*at, text);
  }

  ItemAt Append(std::size_t section, const RandomItem& item) {
    sections_[section].items.push_back(item);
    return {section, sections_[section].items.size() - 1};
  }

  FaultMessages WrongName() {
    static const std::vector<std::pair<std::string, std::string>> names = {
        {"SYSTEM", "X_1"},     {"PELMGROUP", "VALUE_1"}, {"SENSOR", "VALUEX"}, {"DEVICE", "p_x"},
        {"ACTION", "VALUE_x"}, {"ACTION", "P_1"},        {"TABLE", "256"},     {"TABLE", "7.3"},
        {"TABLE", "0.0x100"},  {"TABLE", "x"},           {"GLOBAL", "X"},      {"PROPERTY", "9x"},
        {"REPEATER", "3r"}};
    const auto& [kind, key] = random_.Pick(names);
    const auto at = PickItem([&, &name = kind](const RandomSection& section, const RandomItem&) {
      return section.name == name;
    });
    if (!at) return nullptr;
    return AboutEntry(Append(at->section, {key, {"1"}}), ", Entry name is invalid.");
  }

  // It has no place of its own: the script's first file, and no line.
  FaultMessages MissingEntry() {
    const auto at = PickItem(IsRequired);
    if (!at) return nullptr;
    const std::string names = '[' + at->SectionIn(sections_).name + "]:" + at->In(sections_).key;
    auto& items = sections_[at->section].items;
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(at->item));
    return [=](const Sections&) -> Parts {
      return {"Error[board.rux:0]: " + names + ", This ENTRY does not exist.\n"};
    };
  }

  FaultMessages NoText() {
    const auto at = PickItem(IsText);
    if (!at) return nullptr;
    // An empty text: only the model of the system may be one.
    const bool may_be_empty = at->In(sections_).key == "MODEL";
    return Change(at, may_be_empty || random_.Chance(50) ? Parts{} : Parts{""}, ", No sub-string.");
  }

  FaultMessages NoNumber() {
    static const Parts texts = {"none", "12345678901", "0xg", "-0", "00000000000", "0x"};
    const std::string text = texts[random_.Below(texts.size() - 1)];
    const auto at = PickItem([](const RandomSection& section, const RandomItem& item) {
      return IsText(section, item) && section.name != "PROPERTY" && kNumberKeys.count(item.key);
    });
    return Change(at, {text}, ", " + text + " has not been defined and is not a valid number.");
  }

  FaultMessages WrongValue() {
    const std::string type = WordFor(1);
    const std::vector<std::pair<Parts, std::string>> values = {
        {{}, ", No value type sub-string."},
        {{"none", "1"}, ", Value operator type(none) is invalid."},
        {{type}, ", Not enough sub-strings for value type " + type + '.'},
        {{WordFor(2), "~", "1", "2"}, ", Value:OPERATOR ~ is invalid."},
        {{WordFor(4), "1", "2", "BUSTYPE_SIMPLEIOPORT", "0x1"},
         ", The BaseAddress 0x1 of BUSTYPE_SIMPLEIOPORT must be 0."},
        {{WordFor(3), "none"}, ", The ACTION with NAME none does not exist."},
        {{WordFor(102), "1", "none"}, ", The ACTION with NAME none does not exist."},
        {{WordFor(10), "none", "1"}, ", The TABLE with NAME none does not exist."},
        {{type, "G_none"}, ", The GLOBAL entry with NAME G_none does not exist."},
        {{type, "ARG9"}, ", The ARG name ARG9 is invalid."},
        {{type, "VALUE_9"}, ", The VALUE name VALUE_9 is not valid in this section."},
        {{WordFor(104), "none"}, ", The VALUE name none is not valid in this section."},
        {{type, "none"}, ", none has not been defined and is not a valid number."},
        {{WordFor(8), "1", "none", "BUSTYPE_SMBUS", "0"},
         ", none has not been defined and is not a valid number."}};
    const auto& [parts, text] = random_.Pick(values);
    return Change(PickItem(IsValue), parts, text);
  }

  FaultMessages ShortRepetition() {
    const auto at = PickItem(
        [](const RandomSection& section, const RandomItem&) { return section.name == "REPEATER"; });
    if (random_.Chance(50)) return Change(at, {}, ", No sub-string.");
    return Change(at, {"1"}, ", not enough sub-strings.");
  }

  FaultMessages WrongCount() {
    const auto action = PickItem("ACTION", "NAME");
    if (!action) return nullptr;
    std::uint32_t count = 0;
    for (const RandomItem& item : action->SectionIn(sections_).items) {
      if (item.key == "ARGNUMBER") count = *ReadNumber(item.parts[0]);
    }
    const std::string name = action->In(sections_).parts[0];
    Parts parts = {WordFor(3), name};
    parts.resize(parts.size() + count + 1, "1");
    return Change(PickItem(IsValue), parts,
                  " The ACTION " + name + " needs " + std::to_string(count) +
                      " PARAMS, but total " + std::to_string(count + 1) + " PARAMS here.");
  }

  FaultMessages UnknownParent() {
    return Change(PickItem("SENSOR", "PARENT"), {"none"}, ", Parent GROUP none does not exist.");
  }

  // The section complains first, then its entry.
  FaultMessages UnknownGroup() {
    const auto at = PickItem("GROUP", "PARENT");
    const FaultMessages entry = Change(at, {"none"}, ", Parent GROUP none does not exist.");
    if (!entry) return nullptr;
    return [=](const Sections& sections) -> Parts {
      return {"Error[" + At(at->SectionIn(sections).place) +
                  "]: Parent of this group hasn't been defined.\n",
              entry(sections).front()};
    };
  }

  FaultMessages UnknownPid() {
    return Change(PickItem("PELMGROUP", "PID"), {kUnknownId},
                  std::string(", Parent PELMGROUP with ID ") + kUnknownId + " does not exist.");
  }

  FaultMessages UnknownSensor() {
    const auto at = PickItem("PELMGROUP", "SENSORS");
    if (!at) return nullptr;
    at->In(sections_).parts.push_back(kUnknownId);
    return AboutEntry(*at, std::string(", The SENSOR with ID ") + kUnknownId + " does not exist.");
  }

  FaultMessages UnlistedSensor() {
    const auto at = PickItem("SENSOR", "ID");
    if (!at) return nullptr;
    const ItemAt copy = CopySection(*at, "NAME", "another");
    copy.In(sections_).parts = {kUnknownId};
    return AboutEntry(copy, std::string(", The parent PELMGROUP of SENSOR with ID ") + kUnknownId +
                                " does not exist.");
  }

  // Puts a copy of an item's section, with another text for a key, at the script's end.
  ItemAt CopySection(ItemAt at, const std::string& key, const std::string& text) {
    RandomSection copy = at.SectionIn(sections_);
    for (RandomItem& item : copy.items) {
      if (item.key == key) item.parts = {text};
    }
    sections_.push_back(copy);
    return {sections_.size() - 1, at.item};
  }

  FaultMessages SecondOfItsKind() {
    const auto at = PickItem([](const RandomSection& section, const RandomItem&) {
      return section.name == "SYSTEM" || section.name == "MORVRUX";
    });
    if (!at) return nullptr;
    const ItemAt copy = CopySection(*at, "", "");
    return [=](const Sections& sections) {
      Parts messages;
      for (const std::size_t section : {at->section, copy.section}) {
        const std::string& name = sections[section].name;
        messages.push_back("Error[" + At(sections[section].place) + "]: SECTION " + name +
                           " is redefined. The MAX number of " + name + " is one.\n");
      }
      return messages;
    };
  }

  // A message about something that was given earlier already.
  static FaultMessages Redefined(ItemAt later, ItemAt earlier, const std::string& what) {
    return [=](const Sections& sections) -> Parts {
      return {"Error[" + At(later.In(sections).place) + "]: [" + later.SectionIn(sections).name +
              "], " + what + " is redefined.It has been defined in Line[" +
              At(earlier.In(sections).place) + "].\n"};
    };
  }

  FaultMessages SameName() {
    const auto at = PickItem("DEVICE", "NAME");
    if (!at) return nullptr;
    return Redefined(CopySection(*at, "ID", kUnknownId), *at, "NAME " + at->In(sections_).parts[0]);
  }

  FaultMessages SameId() {
    const auto at = PickItem("DEVICE", "ID");
    if (!at || !ReadNumber(at->In(sections_).parts[0])) return nullptr;
    return Redefined(CopySection(*at, "NAME", "another"), *at, "ID " + at->In(sections_).parts[0]);
  }

  FaultMessages EntryTwice() {
    const auto at = PickItem(
        [](const RandomSection& section, const RandomItem&) { return !HasWords(section.name); });
    if (!at) return nullptr;
    const ItemAt copy = Append(at->section, RandomItem(at->In(sections_)));
    return [=](const Sections& sections) -> Parts {
      const RandomItem& item = copy.In(sections);
      return {"Error[" + At(item.place) + "]: [" + copy.SectionIn(sections).name + "], Entry " +
              item.key + " is redefined.\n"};
    };
  }

  FaultMessages EntryInTwoSections() {
    const auto at = PickItem([](const RandomSection& section, const RandomItem&) {
      return section.name == "PROPERTY" || section.name == "GLOBAL" || section.name == "REPEATER";
    });
    if (!at) return nullptr;
    const RandomItem item = at->In(sections_);
    sections_.push_back({at->SectionIn(sections_).name, {item}});
    return Redefined({sections_.size() - 1, 0}, *at, "Entry " + item.key);
  }

  Random& random_;
  Sections& sections_;
  const std::map<std::string, std::uint32_t> words_;
};

}  // namespace

FaultMessages AddRandomFault(Random& random, Sections& sections) {
  return FaultMaker(random, sections).Make();
}
