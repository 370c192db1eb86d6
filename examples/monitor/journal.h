// Lines for the journal, on the standard error stream: "<4>INLET_TEMP: 41 degrees C, band WH ...".
// systemd takes the number as the priority of the line; see sd-daemon(3).
#ifndef MONITOR_JOURNAL_H_
#define MONITOR_JOURNAL_H_

#include <cstdio>
#include <string>

namespace monitor {

enum class Priority { kCritical = 2, kError = 3, kWarning = 4, kNotice = 5, kInfo = 6 };

// One write for each line. Names come from meta files and properties: what would begin another line
// or reach a terminal as a command becomes a question mark.
inline void Log(Priority priority, const std::string& text) {
  std::string line = '<' + std::to_string(static_cast<int>(priority)) + '>' + text;
  for (char& c : line) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ' ' || byte == 0x7F) c = '?';
  }
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace monitor

#endif  // MONITOR_JOURNAL_H_
