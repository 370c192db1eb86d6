// Loads compiled files with small damage and asks them everything: a program for valgrind.
//
//   load_damaged STRIDE
//
// Every STRIDE-th case is loaded, a few in each process: only the first debug meta file of a
// process gives its list of source files, and a new process is slow under valgrind.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include "tests/damage/damages.h"
#include "tests/damage/loads.h"
#include "tests/damage/memory_file.h"
#include "tests/damage/samples.h"

namespace {

constexpr std::size_t kPerProcess = 16;

bool InProcess(const std::function<void()>& body) {
  const pid_t process = fork();
  if (process == 0) {
    body();
    _exit(0);
  }
  int status = -1;
  waitpid(process, &status, 0);
  return status == 0;
}

// Whether nothing was found at any of them.
bool LoadAll(Form form, const Damages& damages, std::size_t stride) {
  const MemoryFile file;
  bool well = true;
  for (std::size_t first = 0; first < damages.size(); first += kPerProcess * stride) {
    const std::size_t end = std::min(first + kPerProcess * stride, damages.size());
    const bool loaded = InProcess([&] {
      for (std::size_t i = first; i < end; i += stride) {
        file.Fill(damages.At(i));
        LoadFile(form, file.path());
      }
    });
    if (!loaded) std::printf("one of those from \"%s\" on\n", damages.Name(first).c_str());
    well &= loaded;
  }
  return well;
}

}  // namespace

int main(int count, char** arguments) {
  const std::size_t stride = count == 2 ? std::strtoul(arguments[1], nullptr, 10) : 0;
  if (stride == 0) return 2;
  bool well = true;
  for (const Damage damage : {Damage::kCut, Damage::kBit, Damage::kWord}) {
    well &= LoadAll(Form::kMeta, {MetaSample(), damage}, stride);
    well &= LoadAll(Form::kDebugMeta, {DebugMetaSample(), damage}, stride);
  }
  return well ? 0 : 1;
}
