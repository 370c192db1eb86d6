// Whether a compiled file is sound.
#ifndef COMPILED_VERIFY_H_
#define COMPILED_VERIFY_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/file.h"
#include "ruxcomp/file/fault.h"

namespace rux::compiled {

// What a compiled file holds, in short.
struct Summary {
  Form form = Form::kNone;
  std::uint32_t version = 0;
  std::uint32_t creation_time = 0;
  struct Count {
    const char* name;  // "sections", "entries", ...
    std::size_t count;
  };
  std::vector<Count> counts;
  std::vector<std::string> notes;  // what is odd about the file although it is sound
};

// What is wrong with bytes of neither form.
Fault NoForm();

// What may have happened to bytes with such faults: they are those of a script, another release
// compiled them, the end is missing. Empty when nothing suggests itself.
std::string LikelyCause(std::string_view bytes, const Faults& faults);

// Checks the bytes of a meta file or of a debug meta file, which they are by their magic, against
// all that the layout says and all that the compiler holds to. Takes a time in proportion to the
// bytes, and memory for what is looked up: some bytes for every name. Without a fault, the library
// loads them, unless a note says otherwise. `summary` may be null; with faults, its counts are
// those of what could be read.
Faults Verify(std::string_view bytes, Summary* summary = nullptr);

}  // namespace rux::compiled

#endif  // COMPILED_VERIFY_H_
