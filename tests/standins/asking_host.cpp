// A host program that asks until its very end. Its objects, made before main, in main and after the
// first question, ask in their destructors, and so do functions that run at exit.
//
//   asking_host FOLDER    which holds board.meta and board.metad
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "ruxcomp/ruxcomp.h"

extern "C" __attribute__((visibility("default"))) void Output(unsigned int, const char*, ...) {}

namespace {

const char* Found(const void* handle) { return handle ? "found" : "not found"; }

void Ask(const char* who) {
  const std::string name = "A_SENSOR_WITH_A_LONG_NAME";
  const GDSECTION written = gdGetSectByIndex(RUX_SECT_SENSOR, 1);
  char text[64] = "none";
  if (const GDENTRY entry = gdGetEntryByIndex(written, 2)) gdGetValue(entry, text);
  std::printf("%s: %u sensors, %s, %s, %s, group %u; %s = %s\n", who,
              gcGetSectCount(RUX_SECT_SENSOR), Found(gcGetSectByIndex(RUX_SECT_SENSOR, 1)),
              Found(gcGetSectByID(RUX_SECT_SENSOR, 18)),
              Found(gcGetSectByName(RUX_SECT_SENSOR, name)), gcGetGroupIndex("BOARD"),
              gdGetSectName(written) ? gdGetSectName(written) : "none", text);
}

struct Asker {
  explicit Asker(const char* name) : who(name) {}
  ~Asker() { Ask(who); }
  Asker(const Asker&) = delete;
  Asker& operator=(const Asker&) = delete;

  const char* who;
};

const Asker before_main("made before main");

}  // namespace

int main(int, char** arguments) {
  const std::string folder = arguments[1];
  std::atexit([] { Ask("registered first"); });
  static const Asker unasked("made before the first question");
  if (!gcInit(folder + "/board.meta") || !gdInit(folder + "/board.metad")) return 1;
  Ask("main");
  static const Asker asked("made after the first question");
  std::atexit([] { Ask("registered last"); });
  return 0;
}
