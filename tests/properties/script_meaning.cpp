#include "tests/properties/script_meaning.h"

#include <algorithm>
#include <set>

#include "tests/properties/number_reading.h"

namespace {

using Keys = std::vector<std::string>;

// Index classes.
constexpr std::uint32_t kProperty = 0x03000000;
constexpr std::uint32_t kGlobal = 0x04000000;
constexpr std::uint32_t kValue = 0x05000000;
constexpr std::uint32_t kRepeater = 0x06000000;
constexpr std::uint32_t kNumber = 0x11000000;
constexpr std::uint32_t kString = 0x12000000;
constexpr std::uint32_t kGroup = 0x18000000;
constexpr std::uint32_t kAction = 0x1A000000;
constexpr std::uint32_t kTableName = 0x1C000000;
constexpr std::uint32_t kSmall = 0x1D000000;
constexpr std::uint32_t kType = 0x1E000000;
constexpr std::uint32_t kOperator = 0x1F000000;

struct Kind {
  std::uint32_t identifier;
  Keys keys;  // that every section of the kind may have, in the order in which they are compiled
};

const std::map<std::string, Kind> kKinds = {
    {"MORVRUX", {0x01000001, {"VERSION"}}},
    {"PROPERTY", {0x01000002, {}}},
    {"SYSTEM", {0x01000003, {"TYPE", "MODEL", "FLAG", "SOUTHBRIDGE", "NORTHBRIDGE", "RUXLOOP"}}},
    {"GROUP",
     {0x01000004,
      {"PARENT", "NAME", "CHILDGROUP", "VALUE_INIT", "VALUE_DEINIT", "VALUE_ENTRY", "VALUE_EXIT"}}},
    {"SENSOR",
     {0x01000005,
      {"PARENT", "NAME", "ID", "TYPE", "INITFLAG", "CONTROLMASK", "THEORY", "THRESHOLD_FH",
       "THRESHOLD_WH", "THRESHOLD_FL", "THRESHOLD_WL", "VALUE_INIT", "VALUE_DEINIT", "VALUE_ENTRY",
       "VALUE_EXIT", "VALUE", "VALUE_IPMI"}}},
    {"DEVICE", {0x01000006, {"NAME", "ID", "INITFLAG", "CONTROLMASK"}}},
    {"ACTION", {0x01000007, {"NAME", "ARGNUMBER", "VALUE_IPMI", "VALUE"}}},
    {"TABLE", {0x01000008, {"NAME", "TYPE"}}},
    {"PELMGROUP", {0x01000009, {"NAME", "ID", "PID", "SENSORS"}}},
    {"GLOBAL", {0x0100000A, {}}},
    {"REPEATER", {0x0100000B, {}}},
};

const std::map<std::string, std::uint32_t> kTexts = {
    {"VERSION", 0x02000001}, {"MODEL", 0x02000013}, {"PARENT", 0x02000014}, {"NAME", 0x02000015}};

const std::map<std::string, std::uint32_t> kNumbers = {
    {"TYPE", 0x02000002},         {"FLAG", 0x02000003},         {"SOUTHBRIDGE", 0x02000004},
    {"NORTHBRIDGE", 0x02000005},  {"RUXLOOP", 0x02000006},      {"CHILDGROUP", 0x02000007},
    {"ID", 0x02000008},           {"INITFLAG", 0x02000009},     {"CONTROLMASK", 0x0200000A},
    {"THEORY", 0x0200000B},       {"THRESHOLD_FH", 0x0200000C}, {"THRESHOLD_WH", 0x0200000D},
    {"THRESHOLD_FL", 0x0200000E}, {"THRESHOLD_WL", 0x0200000F}, {"ARGNUMBER", 0x02000010},
    {"PID", 0x02000011}};

constexpr std::uint32_t kSensors = 0x02000016;

const std::map<std::string, std::uint32_t> kOperators = {
    {"+", 1},   {"-", 2},    {"*", 3},    {"/", 4},   {"|", 5},    {"&", 6},
    {"%", 7},   {"^", 8},    {">>", 9},   {"<<", 10}, {"pow", 20}, {"==", 101},
    {">", 102}, {">=", 103}, {"!=", 104}, {"<", 105}, {"<=", 106}};

bool Begins(const std::string& text, const std::string& beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

// Of an index that carries its number itself.
Datum Immediate(std::uint32_t index) { return {index & 0xFF000000, index & 0x00FFFFFF}; }

// The largest number looks like one that the table does not have.
Datum Number(std::uint32_t number) {
  if (number == 0xFFFFFFFF) return {kNumber, {}};
  return {kNumber, number};
}

class Meaner {
 public:
  explicit Meaner(const std::vector<RandomSection>& sections) : script_(sections) {}

  ScriptMeaning Mean() {
    for (const RandomSection& section : script_) {
      DefineWords(section);
      NoteNames(section);
    }
    for (const RandomSection& section : script_) {
      const auto kind = kKinds.find(section.name);
      if (kind != kKinds.end()) MeanSection(section, kind->second);
    }
    return std::move(meaning_);
  }

 private:
  using Parts = std::vector<std::string>;

  // A word counts from its definition on; what is no number is 0.
  void DefineWords(const RandomSection& section) {
    if (section.name != "DEFINE" && section.name != "IFDEF") return;
    for (std::size_t i = section.name == "IFDEF" ? 1 : 0; i < section.items.size(); ++i) {
      const RandomItem& item = section.items[i];
      meaning_.words[item.key] = WordOrNumber(item.parts[0]).value_or(0);
    }
  }

  void NoteNames(const RandomSection& section) {
    if (meaning_.groups.empty()) meaning_.groups = {"0"};
    for (const RandomItem& item : section.items) {
      if (section.name == "GROUP" && item.key == "NAME") meaning_.groups.push_back(item.parts[0]);
      if (section.name == "PROPERTY") properties_.insert(item.key);
      const bool has_properties =
          section.name == "SENSOR" || section.name == "DEVICE" || section.name == "SYSTEM";
      if (has_properties && Begins(item.key, "P_")) properties_.insert(item.key.substr(2));
    }
  }

  std::optional<std::uint32_t> Word(const std::string& text) const {
    const auto found = meaning_.words.find(text);
    if (found == meaning_.words.end()) return std::nullopt;
    return found->second;
  }
  std::optional<std::uint32_t> WordOrNumber(const std::string& text) const {
    const auto word = Word(text);
    return word ? word : ReadNumber(text);
  }
  std::optional<std::uint32_t> NumberOrWord(const std::string& text) const {
    const auto number = ReadNumber(text);
    return number ? number : Word(text);
  }

  // The keys of the kind first, in its order, then those of the script's own.
  static std::vector<const RandomItem*> InOrder(const RandomSection& section, const Kind& kind) {
    std::vector<const RandomItem*> items;
    for (const RandomItem& item : section.items) items.push_back(&item);
    std::stable_sort(items.begin(), items.end(), [&](const RandomItem* a, const RandomItem* b) {
      const auto place = [&](const RandomItem* item) {
        return std::find(kind.keys.begin(), kind.keys.end(), item->key);
      };
      return place(a) < place(b);
    });
    return items;
  }

  void MeanSection(const RandomSection& section, const Kind& kind) {
    MeantSection meant{kind.identifier, {}};
    if (section.name == "TABLE") meaning_.tables.push_back(cells_);
    for (const RandomItem* item : InOrder(section, kind)) {
      if (section.name == "MORVRUX" && item->key != "VERSION") continue;  // rejected
      const bool known = std::count(kind.keys.begin(), kind.keys.end(), item->key) > 0;
      if (section.name == "TABLE" && !known) {
        SetCells(*item);
        continue;
      }
      // A property that no table has a name for ends the section.
      const bool is_property = !known && Begins(item->key, "P_") && section.name != "PROPERTY" &&
                               section.name != "GLOBAL" && section.name != "REPEATER";
      if (is_property && properties_.count(item->key.substr(2)) == 0) break;
      meant.entries.push_back(is_property ? MeanProperty(item->key.substr(2), *item)
                                          : MeanEntry(section.name, *item));
    }
    meaning_.sections.push_back(std::move(meant));
  }

  static MeantEntry MeanProperty(const std::string& name, const RandomItem& item) {
    return {kProperty, name, {{kString, item.parts[0]}}};
  }

  MeantEntry MeanEntry(const std::string& section, const RandomItem& item) const {
    const std::string& key = item.key;
    if (section == "PROPERTY") return MeanProperty(key, item);
    if (section == "GLOBAL") return {kGlobal, key.substr(2), ValueOf(item.parts)};
    if (section == "REPEATER") return {kRepeater, key, RepetitionOf(item.parts)};
    if (key == "VALUE") return {kValue, "", ValueOf(item.parts)};
    if (Begins(key, "VALUE_")) return {kValue, key.substr(6), ValueOf(item.parts)};
    if (key == "SENSORS") return {kSensors, "", SensorsOf(item.parts)};
    const auto text = kTexts.find(key);
    if (text != kTexts.end()) {
      return {text->second, "", {{TableOf(section, key), item.parts[0]}}};
    }
    return {kNumbers.at(key), "", {Number(*WordOrNumber(item.parts[0]))}};
  }

  static std::uint32_t TableOf(const std::string& section, const std::string& key) {
    if (section == "GROUP" || (section == "SENSOR" && key == "PARENT")) return kGroup;
    return section == "ACTION" ? kAction : kString;
  }

  // A word ends the list.
  static std::vector<Datum> SensorsOf(const Parts& parts) {
    std::vector<Datum> values;
    for (const std::string& part : parts) {
      const auto number = ReadNumber(part);
      if (!number) break;
      values.push_back(Number(*number));
    }
    return values;
  }

  // A count that is a word leaves nothing.
  std::vector<Datum> RepetitionOf(const Parts& parts) const {
    const auto count = ReadNumber(parts[0]);
    if (!count) return {};
    std::vector<Datum> values = {Number(*count), {kAction, parts[1]}};
    AddOperands(parts, 2, parts.size(), values);
    return values;
  }

  std::vector<Datum> ValueOf(const Parts& parts) const {
    const std::uint32_t type = *Word(parts[0]);
    std::vector<Datum> values = {Immediate(kType + type)};
    const auto operands = [&](std::size_t begin, std::size_t end) {
      AddOperands(parts, begin, std::min(end, parts.size()), values);
    };
    const std::size_t all = parts.size();
    switch (type) {
      case 1:
      case 101:
      case 103:
      case 104:
        operands(1, 2);
        break;
      case 2: {
        const std::uint32_t code = kOperators.at(parts[1]);
        values.push_back(Immediate(kOperator + code));
        operands(2, code >= 101 ? 6 : 4);
        break;
      }
      case 3:
        values.push_back({kAction, parts[1]});
        operands(2, all);
        break;
      case 4:
      case 8:
      case 12:
      case 7:
        operands(1, 5);
        break;
      case 5:
      case 9:
      case 11:
      case 6:
        operands(1, all);
        break;
      case 10:
        values.push_back({kTableName, parts[1]});
        operands(2, 3);
        break;
      case 102:
        operands(1, 2);
        values.push_back({kAction, parts[2]});
        operands(3, all);
        break;
      default:
        break;
    }
    return values;
  }

  void AddOperands(const Parts& parts, std::size_t begin, std::size_t end,
                   std::vector<Datum>& values) const {
    for (; begin < end; ++begin) values.push_back(Operand(parts[begin]));
  }

  Datum Operand(const std::string& text) const {
    if (const auto number = NumberOrWord(text)) return Number(*number);
    if (Begins(text, "VALUE_")) return {kValue, text.substr(6)};
    if (Begins(text, "G_")) return {kGlobal, text.substr(2)};
    return Immediate(kSmall + *ReadNumber(text.substr(3)));  // ARG and a number
  }

  // Cells that no row sets keep what the table before had there.
  void SetCells(const RandomItem& row) {
    const std::size_t dot = row.key.find('.');
    const std::uint32_t low = *ReadNumber(row.key.substr(0, dot));
    const std::uint32_t high =
        dot == std::string::npos ? low : *ReadNumber(row.key.substr(dot + 1));
    const auto value = static_cast<std::uint8_t>(ReadNumber(row.parts[0]).value_or(0));
    for (std::uint32_t cell = low; cell <= high; ++cell) cells_[cell] = value;
    meaning_.tables.back() = cells_;
  }

  const std::vector<RandomSection>& script_;
  ScriptMeaning meaning_;
  std::set<std::string> properties_;  // names that the table of properties has
  std::array<std::uint8_t, 256> cells_ = {};
};

}  // namespace

ScriptMeaning MeaningOf(const std::vector<RandomSection>& sections) {
  return Meaner(sections).Mean();
}
