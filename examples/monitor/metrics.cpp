#include "metrics.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "machine.h"

namespace monitor {
namespace {

// A text between quotes. A file with anything but UTF-8 would be refused as a whole, so bytes that
// are not ASCII become question marks.
std::string Quoted(std::string_view text) {
  constexpr unsigned char kMostAscii = 0x7E;
  std::string quoted = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\' || c == '"') quoted += '\\';
    quoted += byte < ' ' || byte > kMostAscii ? '?' : c;
  }
  return quoted + '"';
}

std::string Head(const std::string& name, const char* type, const char* help) {
  return "# HELP " + name + ' ' + help + "\n# TYPE " + name + ' ' + type + '\n';
}

std::string Counter(const std::string& name, const char* help, std::uint64_t count) {
  return Head(name, "counter", help) + name + ' ' + std::to_string(count) + '\n';
}

}  // namespace

std::string MetricsText(const std::vector<Sensor>& sensors, const Counters& counters) {
  std::string readings =
      Head("rux_sensor_reading", "gauge", "What the limits of the sensor are compared with.");
  std::string bands = Head("rux_sensor_band", "gauge", "1 for the band that the sensor is in.");
  for (const Sensor& sensor : sensors) {
    const std::string label = "{sensor=" + Quoted(sensor.name);
    if (sensor.reading)
      readings += "rux_sensor_reading" + label + "} " + std::to_string(*sensor.reading) + '\n';
    bands += "rux_sensor_band" + label + ",band=" + Quoted(sensor.BandName()) + "} 1\n";
  }
  return readings + bands +
         Counter("rux_monitor_cycles_total", "Rounds over all sensors.", counters.cycles) +
         Counter("rux_monitor_missed_cycles_total",
                 "Rounds left out, for the one before took too long.", counters.missed) +
         Counter("rux_monitor_refused_files_total", "Meta files that were not loaded.",
                 counters.refused);
}

std::string WriteWhole(const std::string& path, const std::string& text) {
  const std::string temporary = path + ".new";
  const auto failure = [](const std::string& name) {
    return name + ": " + std::generic_category().message(errno);
  };
  std::FILE* const file = std::fopen(temporary.c_str(), "we");
  if (file == nullptr) return failure(temporary);
  const bool is_written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  const bool is_closed = std::fclose(file) == 0;
  if (!is_written || !is_closed) return failure(temporary);
  return std::rename(temporary.c_str(), path.c_str()) == 0 ? "" : failure(path);
}

}  // namespace monitor
