#include "bench/model/shapes.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <ios>
#include <ostream>
#include <string>
#include <vector>

namespace {

// A script that is complete but for what the shape adds: one global, one action, one group, in
// which so many others will hang.
class Script {
 public:
  explicit Script(const std::string& folder, std::uint32_t groups = 0)
      : out(folder + "/main.rux", std::ios::binary) {
    out << "[MORVRUX]\nVERSION = 1.0\n\n"
           "[DEFINE]\nVT_LOAD = 1\nVT_CALL = 3\n\n"
           "[SYSTEM]\nTYPE = 2\nMODEL = Machine with very many of one thing\nFLAG = 0\n"
           "RUXLOOP = 1000\n\n"
           "[GLOBAL]\nG_ADC = VT_LOAD, 0\n\n"
           "[ACTION]\nNAME = READ\nARGNUMBER = 1\nVALUE = VT_LOAD, ARG1\n\n"
           "[GROUP]\nPARENT = 0\nNAME = BOARD\nCHILDGROUP = "
        << groups << '\n';
  }

  void Sensor(std::uint32_t id, const char* parent, const char* limit) {
    out << "\n[SENSOR]\nNAME = SENSOR" << id << "\nID = " << id << "\nPARENT = " << parent
        << "\nTYPE = 1\nINITFLAG = 3\nCONTROLMASK = 0\nTHRESHOLD_FH = " << limit
        << "\nVALUE = VT_LOAD, G_ADC\n";
  }

  // The events of the sensors 1 to `count`.
  void Events(std::uint32_t count, const char* separator = ", ") {
    out << "\n[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 0\nSENSORS = 1";
    for (std::uint32_t i = 2; i <= count; ++i) out << separator << i;
    out << '\n';
  }

  // One sensor, which every script has.
  void End() {
    Sensor(1, "BOARD", "90");
    Events(1);
  }

  std::ofstream out;
};

// One section with that many entries, each written by `entry`.
template <typename Entry>
void Section(std::uint32_t count, const std::string& folder, const char* head, const Entry& entry) {
  Script script(folder);
  script.out << '\n' << head << '\n';
  for (std::uint32_t i = 0; i < count; ++i) entry(script.out, i);
  script.End();
}

void Siblings(std::uint32_t count, const std::string& folder) {
  Script script(folder, count);
  for (std::uint32_t i = 0; i < count; ++i) {
    script.out << "\n[GROUP]\nPARENT = BOARD\nNAME = GROUP" << i << "\nCHILDGROUP = 0\n";
  }
  script.End();
}

void Properties(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[PROPERTY]", [](std::ostream& out, std::uint32_t i) {
    out << "Slot" << i << " = \"Card " << i << "\"\n";
  });
}

void Globals(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[GLOBAL]", [](std::ostream& out, std::uint32_t i) {
    out << "G_ADC" << i << " = VT_LOAD, " << i << '\n';
  });
}

// Every range of cells once, at most 32,896. So many rows must hide one another, which is reported.
void Rows(std::uint32_t count, const std::string& folder) {
  std::uint32_t first = 0, last = 0;
  Section(count, folder, "[TABLE]\nNAME = CURVE\nTYPE = 1",
          [&](std::ostream& out, std::uint32_t i) {
            out << first << '.' << last << " = " << i % 256 << '\n';
            if (++last == 256) last = ++first;
          });
}

void Words(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[DEFINE]",
          [](std::ostream& out, std::uint32_t i) { out << "WORD" << i << " = " << i << '\n'; });
}

void Repeaters(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[REPEATER]", [](std::ostream& out, std::uint32_t i) {
    out << "Refresh" << i << " = 8, READ, " << i << '\n';
  });
}

void LongList(std::uint32_t count, const std::string& folder) {
  Script script(folder);
  for (std::uint32_t i = 1; i <= count; ++i) script.Sensor(i, "BOARD", "90");
  script.Events(count, ", \\\n  ");
}

// A call with very many arguments.
void LongListLine(std::uint32_t bytes, const std::string& folder) {
  const std::uint32_t arguments = bytes / 5;
  Script script(folder);
  script.out << "\n[ACTION]\nNAME = SUM\nARGNUMBER = " << arguments
             << "\nVALUE = VT_LOAD, ARG1\n\n[GLOBAL]\nG_SUM = VT_CALL, SUM";
  for (std::uint32_t i = 0; i < arguments; ++i) script.out << ", " << i % 900 + 100;
  script.out << '\n';
  script.End();
}

void LongTextLine(std::uint32_t bytes, const std::string& folder) {
  Section(1, folder, "[PROPERTY]", [&](std::ostream& out, std::uint32_t) {
    out << "Note = \"";
    for (std::uint32_t i = 0; i < bytes / 8; ++i) out << "a word, ";
    out << "\"\n";
  });
}

// A long text, and a comment that has as many signs of one.
void LongComment(std::uint32_t count, const std::string& folder) {
  Section(1, folder, "[ACTION]\nARGNUMBER = 0", [&](std::ostream& out, std::uint32_t) {
    out << "NAME = " << std::string(3 * std::size_t{count}, 'A') << " ;";
    for (std::uint32_t i = 0; i < count; ++i) out << " #1";
    out << '\n';
  });
}

void Includes(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[INCLUDE]", [&](std::ostream& out, std::uint32_t i) {
    const std::string name = "part" + std::to_string(i) + ".rux";
    out << "FILE = " << name << '\n';
    std::ofstream(folder + '/' + name, std::ios::binary)
        << "[PROPERTY]\nSlot" << i << " = Card\n\n[GLOBAL]\nG_ADC" << i << " = VT_LOAD, G_ADC\n";
  });
}

void WrongNumbers(std::uint32_t count, const std::string& folder) {
  Script script(folder);
  for (std::uint32_t i = 1; i <= count; ++i) script.Sensor(i, "BOARD", "hot");
  script.Events(count);
}

// A keyword that sensors do not know is a name of their own, and no valid one.
void ForeignKeys(std::uint32_t count, const std::string& folder) {
  Section(count, folder,
          "[SENSOR]\nNAME = FAN\nID = 2\nPARENT = BOARD\nTYPE = 1\nINITFLAG = 3\nCONTROLMASK = 0\n"
          "VALUE = VT_LOAD, G_ADC",
          [](std::ostream& out, std::uint32_t) { out << "RUXLOOP = 1000\n"; });
}

void MissingGroups(std::uint32_t count, const std::string& folder) {
  Script script(folder);
  for (std::uint32_t i = 1; i <= count; ++i) script.Sensor(i, "ELSEWHERE", "90");
  script.Events(count);
}

void UnknownSensors(std::uint32_t count, const std::string& folder) {
  Script script(folder);
  script.out << "\n[PELMGROUP]\nNAME = MISSING\nID = 2\nPID = 0\nSENSORS = 2";
  for (std::uint32_t i = 1; i < count; ++i) script.out << ", " << i + 2;
  script.out << '\n';
  script.End();
}

// Each value of an action refers to the one before it.
void LocalValues(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[ACTION]\nNAME = STEPS\nARGNUMBER = 0\nVALUE_0 = VT_LOAD, 0",
          [](std::ostream& out, std::uint32_t i) {
            out << "VALUE_" << i + 1 << " = VT_LOAD, VALUE_" << i << '\n';
          });
}

// One loop through all of them.
void ValueLoop(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[GLOBAL]", [&](std::ostream& out, std::uint32_t i) {
    out << "G_" << i << " = VT_LOAD, G_" << (i + 1) % count << '\n';
  });
}

// Each global leads back to the first one: as many loops, one longer than the other.
void ValueLoops(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[ACTION]\nNAME = FIRST\nARGNUMBER = 2\nVALUE = VT_LOAD, G_0\n[GLOBAL]",
          [&](std::ostream& out, std::uint32_t i) {
            out << "G_" << i << " = VT_CALL, FIRST, G_" << (i + 1) % count << ", 1\n";
          });
}

void HiddenCharacters(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "[PROPERTY]", [](std::ostream& out, std::uint32_t i) {
    out << "Slot" << i << "\xE2\x80\x8B = \"Card " << i << "\"\n";
  });
}

}  // namespace

const std::vector<Shape>& Shapes() {
  static const std::vector<Shape> shapes = {
      {"siblings", "groups in one group", 10000, Verdict::kClean, Siblings},
      {"properties", "entries of one PROPERTY section", 10000, Verdict::kClean, Properties},
      {"globals", "entries of one GLOBAL section", 10000, Verdict::kClean, Globals},
      {"rows", "rows of one TABLE section", 10000, Verdict::kWarned, Rows},
      {"words", "words of one DEFINE section", 10000, Verdict::kClean, Words},
      {"repeaters", "entries of one REPEATER section", 10000, Verdict::kClean, Repeaters},
      {"long-list", "elements of one SENSORS list", 100000, Verdict::kClean, LongList},
      {"includes", "included files", 1000, Verdict::kClean, Includes},
      {"list-line", "bytes of one line that is a list", 4000000, Verdict::kClean, LongListLine},
      {"text-line", "bytes of one line that is a text", 4000000, Verdict::kClean, LongTextLine},
      {"long-comment", "signs in one comment", 2000000, Verdict::kClean, LongComment},
      {"wrong-numbers", "errors of entries", 10000, Verdict::kRefused, WrongNumbers},
      {"foreign-keys", "keys of other kinds in one SENSOR section", 1000000, Verdict::kRefused,
       ForeignKeys},
      {"missing-groups", "errors of references", 10000, Verdict::kRefused, MissingGroups},
      {"unknown-sensors", "errors in one list", 100000, Verdict::kRefused, UnknownSensors},
      {"local-values", "values of one ACTION section", 100000, Verdict::kClean, LocalValues},
      {"value-loop", "globals in one loop", 100000, Verdict::kWarned, ValueLoop},
      {"value-loops", "loops of globals", 100000, Verdict::kWarned, ValueLoops},
      {"hidden-characters", "characters that draw a warning", 100000, Verdict::kWarned,
       HiddenCharacters},
  };
  return shapes;
}
