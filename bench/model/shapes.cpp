#include "bench/model/shapes.h"

#include <fstream>

namespace {

// A script that is complete but for what the shape adds: one group, one action, one global.
class Script {
 public:
  explicit Script(const std::string& folder) : out(folder + "/main.rux", std::ios::binary) {
    out << "[MORVRUX]\nVERSION = 1.0\n\n"
           "[DEFINE]\nVT_LOAD = 1\nVT_CALL = 3\n\n"
           "[SYSTEM]\nTYPE = 2\nMODEL = Machine with very many of one thing\nFLAG = 0\n"
           "RUXLOOP = 1000\n\n"
           "[GLOBAL]\nG_ADC = VT_LOAD, 0\n\n"
           "[ACTION]\nNAME = READ\nARGNUMBER = 1\nVALUE = VT_LOAD, ARG1\n\n"
           "[GROUP]\nPARENT = 0\nNAME = BOARD\nCHILDGROUP = 0\n";
  }

  void Sensor(std::uint32_t id, const char* parent, const char* limit) {
    out << "\n[SENSOR]\nNAME = SENSOR" << id << "\nID = " << id << "\nPARENT = " << parent
        << "\nTYPE = 1\nINITFLAG = 3\nCONTROLMASK = 0\nTHRESHOLD_FH = " << limit
        << "\nVALUE = VT_LOAD, G_ADC\n";
  }

  // The events of that many elements, of which the sensors 1 to `sensors` are named in turn.
  void Events(std::uint32_t count, std::uint32_t sensors, const char* separator) {
    out << "\n[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 0\nSENSORS = 1";
    for (std::uint32_t i = 1; i < count; ++i) out << separator << i % sensors + 1;
    out << '\n';
  }

  std::ofstream out;
};

// One section with that many entries, each written by `entry`.
template <typename Entry>
void Section(std::uint32_t count, const std::string& folder, const char* head, const Entry& entry) {
  Script script(folder);
  script.out << '\n' << head << '\n';
  for (std::uint32_t i = 0; i < count; ++i) entry(script.out, i);
  script.Sensor(1, "BOARD", "90");
  script.Events(1, 1, "");
}

void Siblings(std::uint32_t count, const std::string& folder) {
  Section(count, folder, "", [](std::ostream& out, std::uint32_t i) {
    out << "\n[GROUP]\nPARENT = BOARD\nNAME = GROUP" << i << "\nCHILDGROUP = 0\n";
  });
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

// Every range of cells once, at most 32,896.
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

void SensorList(std::uint32_t count, const std::string& folder, const char* separator) {
  const std::uint32_t sensors = count / 100 + 1;
  Script script(folder);
  for (std::uint32_t i = 1; i <= sensors; ++i) script.Sensor(i, "BOARD", "90");
  script.Events(count, sensors, separator);
}

void LongList(std::uint32_t count, const std::string& folder) {
  SensorList(count, folder, ", \\\n  ");
}

void LongListLine(std::uint32_t bytes, const std::string& folder) {
  SensorList(bytes / 6, folder, ", ");
}

void LongTextLine(std::uint32_t bytes, const std::string& folder) {
  Section(1, folder, "[PROPERTY]", [&](std::ostream& out, std::uint32_t) {
    out << "Note = \"";
    for (std::uint32_t i = 0; i < bytes / 8; ++i) out << "a word, ";
    out << "\"\n";
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
  script.Events(count, count, ", ");
}

void MissingGroups(std::uint32_t count, const std::string& folder) {
  Script script(folder);
  for (std::uint32_t i = 1; i <= count; ++i) script.Sensor(i, "BOARDS", "90");
  script.Events(count, count, ", ");
}

}  // namespace

const std::vector<Shape>& Shapes() {
  static const std::vector<Shape> shapes = {
      {"siblings", "groups in one group", 10000, true, Siblings},
      {"properties", "entries of one PROPERTY section", 10000, true, Properties},
      {"globals", "entries of one GLOBAL section", 10000, true, Globals},
      {"rows", "rows of one TABLE section", 10000, true, Rows},
      {"words", "words of one DEFINE section", 10000, true, Words},
      {"repeaters", "entries of one REPEATER section", 10000, true, Repeaters},
      {"long-list", "elements of one SENSORS list", 100000, true, LongList},
      {"includes", "included files", 1000, true, Includes},
      {"list-line", "bytes of one line that is a list", 4000000, true, LongListLine},
      {"text-line", "bytes of one line that is a text", 4000000, true, LongTextLine},
      {"wrong-numbers", "errors of entries", 10000, false, WrongNumbers},
      {"missing-groups", "errors of references", 10000, false, MissingGroups},
  };
  return shapes;
}
