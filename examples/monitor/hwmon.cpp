#include "hwmon.h"

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace monitor {
namespace {

// By the kernel's Documentation/hwmon/sysfs-interface.
constexpr InputKind kKinds[] = {
    {"temp", 1e3, "degrees C"}, {"in", 1e3, "V"},       {"curr", 1e3, "A"}, {"power", 1e6, "W"},
    {"energy", 1e6, "J"},       {"humidity", 1e3, "%"}, {"fan", 1, "RPM"},
};

// The bytes of a small file. Opening never waits, whatever the path leads to.
std::optional<std::string> ReadSmallFile(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return std::nullopt;
  std::array<char, 128> bytes;
  const ssize_t size = read(file, bytes.data(), bytes.size());
  const int error = errno;
  close(file);
  errno = error;
  if (size < 0) return std::nullopt;
  std::string text(bytes.data(), static_cast<std::size_t>(size));
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

// The last name in what a link refers to; empty if it is not a link.
std::string LinkedName(const std::string& path) {
  std::array<char, PATH_MAX> target;
  const ssize_t size = readlink(path.c_str(), target.data(), target.size());
  if (size < 0) return "";
  const std::string text(target.data(), static_cast<std::size_t>(size));
  return text.substr(text.rfind('/') + 1);
}

// "-isa-0a30": the bus of a chip and its place there, from the names that the kernel gives.
std::string BusOf(const std::string& folder) {
  const std::string device = LinkedName(folder + "/device");
  if (device.empty()) return "-virtual-0";
  const std::string bus = LinkedName(folder + "/device/subsystem");
  std::array<char, 64> text{};
  unsigned int a = 0;
  unsigned int b = 0;
  unsigned int c = 0;
  unsigned int d = 0;
  if (bus == "i2c" && std::sscanf(device.c_str(), "%u-%x", &a, &b) == 2) {
    std::snprintf(text.data(), text.size(), "-i2c-%u-%02x", a, b);
  } else if (bus == "pci" && std::sscanf(device.c_str(), "%x:%x:%x.%x", &a, &b, &c, &d) == 4) {
    std::snprintf(text.data(), text.size(), "-pci-%04x", (a << 16U) + (b << 8U) + (c << 3U) + d);
  } else if (bus == "platform") {
    std::sscanf(device.c_str(), "%*[^.].%u", &a);
    std::snprintf(text.data(), text.size(), "-isa-%04x", a);
  } else {
    return '-' + bus + "-0";
  }
  return text.data();
}

}  // namespace

std::vector<Chip> FindChips(const std::string& root) {
  const std::string all = root + "/sys/class/hwmon";
  std::vector<Chip> chips;
  const std::unique_ptr<DIR, int (*)(DIR*)> folders(opendir(all.c_str()), closedir);
  if (!folders) return chips;
  while (const dirent* const entry = readdir(folders.get())) {
    const std::string folder = all + '/' + entry->d_name;
    if (entry->d_name[0] == '.') continue;
    const std::optional<std::string> driver = ReadSmallFile(folder + "/name");
    if (driver) chips.push_back({*driver + BusOf(folder), folder});
  }
  std::sort(chips.begin(), chips.end(), [](const Chip& a, const Chip& b) {
    return strverscmp(a.folder.c_str(), b.folder.c_str()) < 0;
  });
  return chips;
}

const Chip* ChipFor(const std::vector<Chip>& chips, std::string_view patterns) {
  while (!patterns.empty()) {
    const std::size_t end = std::min(patterns.find(' '), patterns.size());
    const std::string pattern(patterns.substr(0, end));
    patterns.remove_prefix(std::min(end + 1, patterns.size()));
    for (const Chip& chip : chips) {
      if (fnmatch(pattern.c_str(), chip.name.c_str(), 0) == 0) return &chip;
    }
  }
  return nullptr;
}

const InputKind* KindOf(std::string_view feature) {
  for (const InputKind& kind : kKinds) {
    const std::string_view number = feature.substr(std::min(kind.feature.size(), feature.size()));
    if (feature.substr(0, kind.feature.size()) == kind.feature && !number.empty() &&
        number.find_first_not_of("0123456789") == std::string_view::npos)
      return &kind;
  }
  return nullptr;
}

std::optional<std::int64_t> ReadInput(const std::string& path, std::string& reason) {
  const std::optional<std::string> text = ReadSmallFile(path);
  if (!text) {
    reason = path + ": " + std::generic_category().message(errno);
    return std::nullopt;
  }
  std::int64_t number = 0;
  const char* const end = text->data() + text->size();
  const auto [rest, error] = std::from_chars(text->data(), end, number);
  if (error == std::errc() && rest == end) return number;
  reason = path + ": not a number";
  return std::nullopt;
}

}  // namespace monitor
