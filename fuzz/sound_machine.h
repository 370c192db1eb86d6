// The machine of a meta file that an input is, for targets that look at whole machines.
#ifndef FUZZ_SOUND_MACHINE_H_
#define FUZZ_SOUND_MACHINE_H_

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "machine/machine.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/model.h"

namespace fuzz {

// None when the bytes are not those of a sound meta file.
inline std::optional<rux::machine::Machine> SoundMachineOf(std::string bytes) {
  if (!ruxcomp::Model::OpenBytes(bytes)) return std::nullopt;
  auto kept = std::make_unique<ruxcomp::file::KeptBytes>();
  kept->Keep(std::move(bytes));
  return rux::machine::Machine("file.meta", {"file.meta"}, std::move(kept), nullptr, nullptr);
}

}  // namespace fuzz

#endif  // FUZZ_SOUND_MACHINE_H_
