#include "tests/generators/random_values.h"

namespace {

class ValueMaker {
 public:
  ValueMaker(Random& random, const ScriptNames& names, const ValuePlace& place)
      : random_(random), names_(names), place_(place) {}

  std::vector<std::string> Make() {
    while (true) {
      const auto& [word, code] = random_.Pick(names_.types);
      parts_ = {word};
      if (Fill(code)) return parts_;
    }
  }

 private:
  // False when the script has nothing that such a value could refer to.
  bool Fill(std::uint32_t code) {
    switch (code) {
      case 1:
      case 101:
      case 103:
        AddOperands(1);
        AddSurplus();
        return true;
      case 2:
        AddCalculation();
        return true;
      case 3:
        return AddCall();
      case 4:
      case 8:
      case 12:
        AddBus(code == 12);
        AddSurplus();
        return true;
      case 5:
      case 9:
      case 11:
        AddBus(code == 11);
        AddOperands(names_.remarkable ? random_.Between(1, 3) : 1);
        return true;
      case 6:
        Add(RandomDigital(random_, names_));
        Add(RandomDigital(random_, names_));
        AddOperands(random_.Below(random_.Chance(5) ? 100 : 4));
        return true;
      case 7:
        AddList();
        return true;
      case 10:
        if (names_.tables.empty()) return false;
        Add(random_.Pick(names_.tables));
        AddOperands(1);
        AddSurplus();
        return true;
      case 102:
        AddOperands(1);
        return AddCall();
      case 104:
        if (place_.values.empty()) return false;
        Add(random_.Pick(place_.values));
        AddSurplus();
        return true;
      default:  // 0 and the types without a record
        AddSurplus();
        return true;
    }
  }

  void AddCalculation() {
    static const std::vector<std::string> arithmetic = {"+", "-", "*",  "/",  "|",  "&",
                                                        "%", "^", ">>", "<<", "pow"};
    static const std::vector<std::string> comparisons = {"==", ">", ">=", "!=", "<", "<="};
    const bool compares = random_.Chance(50);
    Add(random_.Pick(compares ? comparisons : arithmetic));
    AddOperands(compares ? 4 : 2);
    AddSurplus();
  }

  bool AddCall() {
    if (names_.actions.empty()) return false;
    const auto& [name, arguments] = random_.Pick(names_.actions);
    Add(name);
    AddOperands(arguments);
    return true;
  }

  void AddBus(bool only_smbus) {
    AddOperands(1);
    Add(RandomDigital(random_, names_));
    if (only_smbus && !names_.remarkable) {
      Add("BUSTYPE_SMBUS");
      Add("0x00");
      return;
    }
    static const std::vector<std::string> types = {"BUSTYPE_SMBUS", "BUSTYPE_SIMPLEIOPORT", "7"};
    Add(random_.Pick(types));
    if (parts_.back() == "BUSTYPE_SIMPLEIOPORT") {
      Add(RandomNumber(random_, 0));
    } else if (random_.Chance(50)) {
      Add("0x00");
    } else {
      AddOperands(1);
    }
  }

  void AddList() {
    constexpr std::uint32_t kMost = 4;
    const std::uint32_t count = random_.Below(kMost + 1);
    AddOperands(count);
    if (count == kMost) AddSurplus();
  }

  void AddOperands(std::uint32_t count) {
    for (; count > 0; --count) Add(RandomOperand(random_, names_, place_));
  }

  void AddSurplus() {
    if (!names_.remarkable || !random_.Chance(15)) return;
    Add(RandomText(random_));
    Add("");
  }

  void Add(const std::string& part) { parts_.push_back(part); }

  Random& random_;
  const ScriptNames& names_;
  const ValuePlace& place_;
  std::vector<std::string> parts_;
};

}  // namespace

std::string RandomDigital(Random& random, const ScriptNames& names) {
  if (random.Chance(30)) return random.Pick(names.words);
  if (random.Chance(10)) return RandomOddNumber(random);
  return RandomNumber(random, random.Chance(20) ? random.Word() : random.Below(300));
}

std::string RandomOperand(Random& random, const ScriptNames& names, const ValuePlace& place) {
  switch (random.Below(6)) {
    case 0:
      if (!names.globals.empty()) return random.Pick(names.globals);
      break;
    case 1:
      if (!place.values.empty()) return random.Pick(place.values);
      break;
    case 2:
      // Elsewhere only the first one, which is the number of a repeater's round.
      return "ARG" + RandomNumber(random, random.Below(place.in_action ? place.arguments + 1 : 1));
    default:
      break;
  }
  return RandomDigital(random, names);
}

std::vector<std::string> RandomValue(Random& random, const ScriptNames& names,
                                     const ValuePlace& place) {
  return ValueMaker(random, names, place).Make();
}
