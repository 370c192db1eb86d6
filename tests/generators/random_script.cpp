#include "tests/generators/random_script.h"

#include <algorithm>
#include <set>

#include "tests/generators/random_order.h"
#include "tests/generators/random_values.h"

namespace {

class ScriptMaker {
 public:
  ScriptMaker(Random& random, const ScriptOptions& options) : random_(random), options_(options) {
    names_.remarkable = options.remarkable;
  }

  std::vector<RandomSection> Make() {
    ChooseNames();
    MakeDefinitions();
    MakeHeader();
    MakeGroups();
    MakeSensors();
    Repeat(3, [&] { MakeDevice(); });
    for (const auto& [name, arguments] : names_.actions) MakeAction(name, arguments);
    for (const std::string& name : names_.tables) MakeTable(name);
    MakeGlobals();
    Repeat(3, [&] { MakeProperties(); });
    if (!names_.actions.empty()) Repeat(2, [&] { MakeRepeaters(); });
    if (options_.remarkable) Repeat(2, [&] { MakeUnknown(); });
    ShuffleSections(random_, sections_);
    return std::move(sections_);
  }

 private:
  using Parts = std::vector<std::string>;

  template <class Make>
  void Repeat(std::uint32_t most, Make make) {
    for (std::uint32_t count = random_.Below(most + 1); count > 0; --count) make();
  }

  // Texts and names that nothing else has.
  std::string Unique(const std::string& text) { return text + std::to_string(next_unique_++); }
  std::string UniqueKey(const std::string& beginning) {
    return Unique(RandomKey(random_, beginning) + '_');
  }
  std::string UniqueName(const std::string& beginning) {
    return Unique(RandomName(random_, beginning) + '_');
  }
  std::string UniqueText() { return Unique(RandomText(random_) + '_'); }

  // A text, often followed by parts that nobody takes.
  Parts Text() { return WithSurplus(RandomText(random_)); }
  Parts Digital() { return WithSurplus(RandomDigital(random_, names_)); }
  Parts WithSurplus(const std::string& text) {
    if (!options_.remarkable || !random_.Chance(10)) return {text};
    return {text, RandomText(random_), ""};
  }
  Parts Value(const ValuePlace& place = {}) { return RandomValue(random_, names_, place); }

  // A number that is no other section's ID, or a word.
  std::string NewId() {
    if (random_.Chance(20)) return random_.Pick(names_.words);
    return RandomNumber(random_, next_id_++);
  }

  RandomSection& Add(const std::string& name) {
    sections_.push_back({name, {}});
    return sections_.back();
  }

  void ChooseNames() {
    for (const std::uint32_t code :
         {0u,  1u,  2u,  3u,   4u,   5u,   6u,   7u,   8u,   9u,          10u,        11u,
          12u, 13u, 57u, 100u, 101u, 102u, 103u, 104u, 105u, 0x00FFFFFFu, 0xFFFFFFFFu}) {
      names_.types.emplace_back(UniqueName("t"), code);
    }
    for (int i = 0; i < 4; ++i) names_.words.push_back(UniqueName("w"));
    for (int i = 0; i < 3; ++i) shared_.push_back(RandomKey(random_, "s"));
    Repeat(4, [&] { names_.globals.push_back(UniqueName("G_")); });
    Repeat(4, [&] { names_.actions.emplace_back(UniqueText(), random_.Below(4)); });
    Repeat(3, [&] { names_.tables.push_back(UniqueText()); });
  }

  // Every word, some of them several times over: what comes last for a type is its code.
  void MakeDefinitions() {
    std::vector<RandomItem> items = {{"BUSTYPE_SMBUS", {"2"}}, {"BUSTYPE_SIMPLEIOPORT", {"1"}}};
    for (const auto& [word, code] : names_.types) {
      if (random_.Chance(10)) items.push_back({word, Digital()});
      items.push_back({word, {RandomNumber(random_, code)}});
    }
    for (const std::string& word : names_.words) items.push_back({word, Digital()});
    Repeat(4, [&] { items.push_back({random_.Pick(names_.words), Digital()}); });
    Repeat(3, [&] { items.push_back({UniqueKey("x"), Text()}); });
    // Words that look like something else; some of them change what operands come to.
    static const Parts likenesses = {"-1", "+5", "VALUE", "ARG0", "ARG1", "VALUE_1", "G_", "ARG"};
    Repeat(2, [&] { items.push_back({random_.Pick(likenesses), Digital()}); });
    if (!names_.globals.empty() && random_.Chance(20)) {
      items.push_back({random_.Pick(names_.globals), Digital()});
    }
    const std::size_t last = items.size();
    for (std::size_t at = 0; at < last;) at = MakeDefiningSection(items, at);
  }

  // A section with some of the items, none of whose words it may have twice.
  std::size_t MakeDefiningSection(const std::vector<RandomItem>& items, std::size_t at) {
    RandomSection& section = Add(random_.Chance(40) ? "IFDEF" : "DEFINE");
    if (section.name == "IFDEF") {
      section.items.push_back(
          {"DEFINEWORD", random_.Chance(50) ? Text() : Parts{random_.Pick(names_.words)}});
    }
    std::set<std::string> words;
    while (at < items.size() && words.insert(items[at].key).second && !random_.Chance(20)) {
      section.items.push_back(items[at++]);
    }
    return at;
  }

  void MakeHeader() {
    if (random_.Chance(70)) {
      Add("MORVRUX").items = {{"VERSION", Text()}};
      if (options_.remarkable && random_.Chance(20)) {
        sections_.back().items.push_back({"UNKNOWN", Text()});
      }
    }
    if (random_.Chance(30)) return;
    RandomSection& system = Add("SYSTEM");
    system.items = {{"TYPE", Digital()},
                    {"MODEL", random_.Chance(30) ? Parts{""} : Text()},
                    {"FLAG", Digital()},
                    {"RUXLOOP", Digital()}};
    for (const char* key : {"SOUTHBRIDGE", "NORTHBRIDGE"}) {
      if (random_.Chance(50)) system.items.push_back({key, Digital()});
    }
    Repeat(3, [&] { AddFree(system, "P_", Text()); });
    Mix(system);
  }

  void MakeGroups() {
    groups_ = {"0"};
    Repeat(5, [&] {
      RandomSection& group = Add("GROUP");
      const std::string name = UniqueText();
      group.items = {{"PARENT", WithSurplus(random_.Pick(groups_))},
                     {"NAME", WithSurplus(name)},
                     {"CHILDGROUP", Digital()}};
      AddHooks(group);
      Mix(group);
      groups_.push_back(name);
    });
  }

  // Every sensor is in the list of some PELMGROUP.
  void MakeSensors() {
    std::vector<Parts> lists(random_.Below(4));
    if (!lists.empty() && groups_.size() > 1) {
      Repeat(random_.Chance(5) ? 40 : 6, [&] {
        const std::string id = NewId();
        lists[random_.Below(lists.size())].push_back(id);
        MakeSensor(id);
      });
    }
    Parts parents = {"0", "0x0"};
    for (const Parts& list : lists) {
      const std::string id = NewId();
      parents.push_back(id);
      RandomSection& group = Add("PELMGROUP");
      group.items = {{"NAME", WithSurplus(UniqueText())},
                     {"ID", WithSurplus(id)},
                     {"PID", WithSurplus(random_.Pick(parents))},
                     {"SENSORS", list}};
      // Short keys: the property table's length counts them, and it must end within the file.
      if (options_.pelm_properties) {
        Repeat(2, [&] { group.items.push_back({Unique("P_g"), Text()}); });
      }
      Mix(group);
    }
  }

  void MakeSensor(const std::string& id) {
    const std::string parent = groups_[1 + random_.Below(groups_.size() - 1)];
    RandomSection& sensor = Add("SENSOR");
    sensor.items = {{"PARENT", WithSurplus(parent)},
                    {"NAME", WithSurplus(UniqueText())},
                    {"ID", WithSurplus(id)},
                    {"TYPE", Digital()},
                    {"INITFLAG", Digital()},
                    {"CONTROLMASK", Digital()},
                    {"VALUE", Value()}};
    for (const char* key :
         {"THEORY", "THRESHOLD_FH", "THRESHOLD_WH", "THRESHOLD_FL", "THRESHOLD_WL"}) {
      if (random_.Chance(30)) sensor.items.push_back({key, Digital()});
    }
    AddHooks(sensor);
    if (random_.Chance(30)) sensor.items.push_back({"VALUE_IPMI", Value()});
    AddFreeEntries(sensor);
  }

  void MakeDevice() {
    RandomSection& device = Add("DEVICE");
    device.items = {{"NAME", WithSurplus(UniqueText())},
                    {"ID", WithSurplus(NewId())},
                    {"INITFLAG", Digital()},
                    {"CONTROLMASK", Digital()}};
    if (random_.Chance(30)) device.items.push_back({"VALUE_", Value()});
    AddFreeEntries(device);
  }

  void AddHooks(RandomSection& section) {
    for (const char* key : {"VALUE_INIT", "VALUE_DEINIT", "VALUE_ENTRY", "VALUE_EXIT"}) {
      if (random_.Chance(15)) section.items.push_back({key, Value()});
    }
  }

  void AddFreeEntries(RandomSection& section) {
    Repeat(2, [&] { AddFree(section, "P_", Text()); });
    Repeat(2, [&] { AddFree(section, "VALUE_", Value()); });
    Mix(section);
  }

  // Some names are in several sections, and name properties and values alike.
  void AddFree(RandomSection& section, const std::string& beginning, const Parts& parts) {
    std::string key = beginning + random_.Pick(shared_);
    const auto& items = section.items;
    if (random_.Chance(60) || std::any_of(items.begin(), items.end(), [&](const RandomItem& item) {
          return item.key == key;
        })) {
      key = UniqueKey(beginning);
    }
    section.items.push_back({key, parts});
  }

  void MakeAction(const std::string& name, std::uint32_t arguments) {
    RandomSection& action = Add("ACTION");
    action.items = {{"NAME", WithSurplus(name)}};
    if (arguments > 0 || random_.Chance(50)) {
      action.items.push_back({"ARGNUMBER", WithSurplus(RandomNumber(random_, arguments))});
    }
    ValuePlace place{true, arguments, {}};
    for (std::uint32_t i = random_.Below(4); i > 0; --i) {
      // In a key, anything may follow the number.
      place.values.push_back("VALUE_" + std::to_string(i) + (random_.Chance(30) ? " , x" : ""));
    }
    for (const std::string& value : place.values) action.items.push_back({value, Value(place)});
    if (random_.Chance(70)) action.items.push_back({"VALUE", Value(place)});
    if (random_.Chance(30)) action.items.push_back({"VALUE_IPMI", Value(place)});
    Mix(action);
  }

  void MakeTable(const std::string& name) {
    RandomSection& table = Add("TABLE");
    table.items = {{"NAME", WithSurplus(name)}, {"TYPE", Digital()}};
    std::set<std::string> cells;
    Repeat(5, [&] {
      const std::uint32_t low = random_.Below(256);
      std::string key = RandomNumber(random_, low);
      if (random_.Chance(50)) key += "." + RandomNumber(random_, random_.Between(low, 255));
      if (!cells.insert(key).second) return;
      table.items.push_back({key, random_.Chance(70) ? Digital() : Text()});
    });
    Mix(table);
  }

  void MakeGlobals() {
    for (std::size_t i = 0; i < names_.globals.size(); ++i) {
      if (i == 0 || random_.Chance(30)) Add("GLOBAL");
      sections_.back().items.push_back({names_.globals[i], Value()});
    }
  }

  void MakeProperties() {
    RandomSection& properties = Add("PROPERTY");
    static const Parts beginnings = {"p", "\"=\"", "-", "VALUE", "\xC3\xA4", "NAME]", "\r", "\\"};
    Repeat(4, [&] { properties.items.push_back({UniqueKey(random_.Pick(beginnings)), Text()}); });
  }

  void MakeRepeaters() {
    RandomSection& repeaters = Add("REPEATER");
    Repeat(3, [&] {
      const auto& [name, arguments] = random_.Pick(names_.actions);
      Parts parts = {RandomDigital(random_, names_), name};
      for (std::uint32_t i = 0; i < arguments; ++i) {
        parts.push_back(RandomOperand(random_, names_, {}));
      }
      repeaters.items.push_back({UniqueKey("r"), parts});
    });
  }

  void MakeUnknown() { Add("Unknown").items = {{RandomKey(random_, "k"), Text()}}; }

  void Mix(RandomSection& section) { random_.Shuffle(section.items); }

  Random& random_;
  const ScriptOptions& options_;
  ScriptNames names_;
  std::vector<std::string> shared_;  // names for free entries
  std::vector<RandomSection> sections_;
  std::vector<std::string> groups_;
  std::uint32_t next_unique_ = 0;
  std::uint32_t next_id_ = 1;
};

}  // namespace

std::vector<RandomSection> RandomScript(Random& random, const ScriptOptions& options) {
  return ScriptMaker(random, options).Make();
}
