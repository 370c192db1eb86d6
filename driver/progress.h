// How far a run over many scripts is.
#ifndef DRIVER_PROGRESS_H_
#define DRIVER_PROGRESS_H_

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace rux::driver {

// A line on a terminal, "[120/983] boards/x/main.rux", that each next one takes the place of. What
// takes no more than a second has none.
class Progress {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;
  using Print = std::function<void(std::string_view)>;

  // `columns`: those of the terminal, which the line does not fill; 0: shows nothing.
  Progress(std::size_t total, std::size_t columns, Clock now, Print print);

  // So many are done, the script the last of them.
  void Show(std::size_t done, const std::string& script);

  // To be called before anything else is printed, and at the end.
  void Erase();

 private:
  const std::size_t total_;
  const std::size_t columns_;
  const Clock now_;
  const Print print_;
  std::chrono::steady_clock::time_point next_;
  bool is_shown_ = false;
};

}  // namespace rux::driver

#endif  // DRIVER_PROGRESS_H_
