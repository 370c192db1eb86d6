// A meta file and, after it, what picks a profile and readings: everything in a sound file can be
// evaluated. The same bytes as a profile are read, or refused with one line that names the place.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/reading.h"
#include "fuzz/sound_machine.h"
#include "fuzz/target.h"
#include "profile/profile.h"
#include "tests/evaluation/everything.h"

namespace {

constexpr std::size_t kMostTargets = 50;

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  fuzz::IsRead("file.json", [&] { rux::profile::ParseProfile("file.json", bytes); });
  const auto machine = fuzz::SoundMachineOf(bytes);
  if (!machine) return 0;
  // From the end, where the files have their texts and numbers.
  std::size_t at = size;
  const evaluating::Pick pick = [&](std::size_t bound) -> std::size_t {
    at = at == 0 ? size - 1 : at - 1;
    return data[at] % bound;
  };
  const rux::profile::Profile profile = evaluating::AnyProfile(pick);
  for (const evaluating::Target& target : evaluating::TargetsOf(*machine, kMostTargets))
    evaluating::EvaluateTwice(*machine, profile, target, pick, fuzz::Expect);
  return 0;
}
