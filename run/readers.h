// Which reader a run uses.
#ifndef RUN_READERS_H_
#define RUN_READERS_H_

namespace rux::run {

// Whether the installed plug-in is another reader than the one inside this program.
bool IsForeignReaderInstalled();

// Lets the library use the reader inside this program, by direct calls, unless the installed
// plug-in is another reader. Lives as long as a run.
class ReaderChoice {
 public:
  // `takes_texts`: the script is a text in memory, which plug-ins cannot read.
  explicit ReaderChoice(bool takes_texts);
  ~ReaderChoice();
  ReaderChoice(const ReaderChoice&) = delete;
  ReaderChoice& operator=(const ReaderChoice&) = delete;

  // Whether the plug-in was used, or refused for a text.
  bool is_foreign() const;
};

}  // namespace rux::run

#endif  // RUN_READERS_H_
