// Which reader a run reads with.
#ifndef RUN_READERS_H_
#define RUN_READERS_H_

namespace rux::run {

// Lets the library use the reader inside this program, by direct calls, unless a plug-in that is
// another reader is installed. Lives as long as a run.
class ReaderChoice {
 public:
  // `takes_texts`: the script is a text in memory, which plug-ins know nothing of.
  explicit ReaderChoice(bool takes_texts);
  ~ReaderChoice();
  ReaderChoice(const ReaderChoice&) = delete;
  ReaderChoice& operator=(const ReaderChoice&) = delete;

  // Whether the plug-in was used, or refused for a text.
  bool is_foreign() const;
};

}  // namespace rux::run

#endif  // RUN_READERS_H_
