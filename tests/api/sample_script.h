// Complete sections of every kind, to be changed in the one thing that a test is about, and the
// verdict of the checks on scripts made of them.
#ifndef TESTS_API_SAMPLE_SCRIPT_H_
#define TESTS_API_SAMPLE_SCRIPT_H_

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/host.h"
#include "tests/support/script_test.h"

// A section of a script: its header in the first line, then one entry a line, in the order given.
class Section {
 public:
  using Entry = std::pair<std::string, std::string>;

  explicit Section(std::string kind, std::vector<Entry> entries = {})
      : kind_(std::move(kind)), entries_(std::move(entries)) {}

  // The same section with another value for the key; with a further entry at its end when no entry
  // has this key.
  Section With(const std::string& key, const std::string& value) const {
    if (Find(key) == entries_.end()) return And(key, value);
    Section changed = *this;
    changed.entries_[static_cast<std::size_t>(Find(key) - entries_.begin())].second = value;
    return changed;
  }

  // The same section with a further entry at its end, whatever it holds already.
  Section And(const std::string& key, const std::string& value) const {
    Section longer = *this;
    longer.entries_.emplace_back(key, value);
    return longer;
  }

  const std::string& kind() const { return kind_; }

  // The line of the first entry with that key, and that of the last entry, in a script that begins
  // with this section.
  std::string LineOf(const std::string& key) const {
    return std::to_string(2 + (Find(key) - entries_.begin()));
  }
  std::string LastLine() const { return std::to_string(1 + entries_.size()); }

  operator std::string() const {  // NOLINT(google-explicit-constructor): sections make up scripts
    std::string text = "[" + kind_ + "]\n";
    for (const auto& [key, value] : entries_) text.append(key).append(" = ").append(value) += '\n';
    return text;
  }

 private:
  std::vector<Entry>::const_iterator Find(const std::string& key) const {
    return std::find_if(entries_.begin(), entries_.end(),
                        [&](const Entry& entry) { return entry.first == key; });
  }

  std::string kind_;
  std::vector<Entry> entries_;
};

// Sections with just the entries that they cannot do without. Together with the words of Types()
// they make a valid script.
inline Section Morvrux() { return Section("MORVRUX", {{"VERSION", "1"}}); }
inline Section System() {
  return Section("SYSTEM", {{"TYPE", "1"}, {"MODEL", "board"}, {"FLAG", "0"}, {"RUXLOOP", "1"}});
}
inline Section Group() {
  return Section("GROUP", {{"PARENT", "0"}, {"NAME", "group"}, {"CHILDGROUP", "0"}});
}
inline Section PelmGroup() {
  return Section("PELMGROUP", {{"NAME", "pelm"}, {"ID", "1"}, {"PID", "0"}, {"SENSORS", "1"}});
}
inline Section Sensor() {
  return Section("SENSOR", {{"PARENT", "group"},
                            {"NAME", "sensor"},
                            {"ID", "1"},
                            {"TYPE", "1"},
                            {"INITFLAG", "0"},
                            {"CONTROLMASK", "0"},
                            {"VALUE", "T0"}});
}
inline Section Device() {
  return Section("DEVICE",
                 {{"NAME", "device"}, {"ID", "1"}, {"INITFLAG", "0"}, {"CONTROLMASK", "0"}});
}
inline Section Action() { return Section("ACTION", {{"NAME", "action"}}); }
inline Section Table() { return Section("TABLE", {{"NAME", "table"}, {"TYPE", "1"}}); }

// A DEFINE section that names the value types T0, T1, ..., T13, T100, ..., T105 and two bus types.
inline Section Types() {
  Section types("DEFINE", {{"BUSTYPE_SIMPLEIOPORT", "1"}, {"BUSTYPE_SMBUS", "2"}});
  for (int code = 0; code <= 105; code = code == 13 ? 100 : code + 1) {
    types = types.And("T" + std::to_string(code), std::to_string(code));
  }
  return types;
}

using Sections = std::initializer_list<std::string>;

inline std::string Script(Sections sections) {
  std::string text;
  for (const std::string& section : sections) text += section;
  return text;
}

class CheckTest : public ScriptTest {
 protected:
  // A section that the first pass refuses with one message: it holds the second pass back.
  static constexpr char kRefused[] = "[MORVRUX]\n";
  static constexpr char kRefusal[] =
      "Error[board.rux:0]: [MORVRUX]:VERSION, This ENTRY does not exist.\n";

  // The messages of gccCheck about the script "board.rux" with these sections, which must be found
  // valid or, respectively, must not. The compile run is over afterwards.
  Lines Accepted(Sections sections) { return Judge(sections, 1); }
  Lines Rejected(Sections sections) { return Judge(sections, 0); }

  // gccCheck must raise the out-of-range error of a text that has no character to look at.
  void ExpectRaise(Sections sections) {
    Parse(Script(sections));
    std::string what = "nothing raised";
    try {
      gccCheck();
    } catch (const std::out_of_range& error) {
      what = error.what();
    }
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "basic_string::at", what);
    gccCompEnd();
    host::TakeMessages();
  }

 private:
  Lines Judge(Sections sections, std::uint32_t valid) {
    Lines messages = Check(Script(sections), valid);
    gccCompEnd();
    return messages;
  }
};

#endif  // TESTS_API_SAMPLE_SCRIPT_H_
