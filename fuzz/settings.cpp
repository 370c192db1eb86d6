// Files of settings: arbitrary bytes as a project file and as a baseline. Each is read, or refused
// with one line that names the place; a baseline that was read, written and read again is the same.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/reading.h"
#include "fuzz/target.h"
#include "settings/baseline.h"
#include "settings/project.h"

namespace {

using fuzz::Expect;
using fuzz::IsRead;
using rux::settings::BaselineCounts;

constexpr char kPath[] = "file.json";

void ReadProject(std::string_view bytes) {
  const auto check = [](const std::string& level) {
    return std::string(level == "loss" ? "" : "no such level");
  };
  IsRead(kPath, [&] {
    const rux::settings::Project project = rux::settings::ParseProject(kPath, bytes, check);
    for (const std::string& level : project.warnings) Expect(level == "loss", "levels are checked");
    for (const std::string& folder : project.include_folders) {
      Expect(!folder.empty(), "folders have names");
    }
  });
}

void ReadBaseline(std::string_view bytes) {
  BaselineCounts counts;
  if (!IsRead(kPath, [&] { counts = rux::settings::ParseBaseline(kPath, bytes); })) return;
  const std::string text = rux::settings::BaselineText(counts);
  BaselineCounts again;
  Expect(IsRead(kPath, [&] { again = rux::settings::ParseBaseline(kPath, text); }),
         "what was written can be read");
  Expect(rux::settings::BaselineText(again) == text, "what was read is written the same again");
  Expect(again.size() == counts.size(), "nothing gets lost");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  ReadProject(bytes);
  ReadBaseline(bytes);
  return 0;
}
