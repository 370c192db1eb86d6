// The beginning of a path, as it is being typed.
#ifndef TOOL_COMPLETION_TYPED_PATH_H_
#define TOOL_COMPLETION_TYPED_PATH_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "inspect/path.h"
#include "tool/completion/completion.h"

namespace rux::tool {

// A section as a path may call it.
struct SectionWord {
  std::size_t ordinal;
  std::optional<std::string> name;
  std::optional<std::uint32_t> id;
};

class TypedPath {
 public:
  // Throws a Failure of wrong usage when the finished steps make no path.
  explicit TypedPath(const std::string& typed);

  // The steps in front of the one being typed.
  const std::vector<inspect::PathStep>& steps() const { return steps_; }

  // Whether the step being typed begins with that sign: '#' of an ID, '@' of an ordinal.
  bool NextBegins(char sign) const { return next_ == sign; }

  // Add what the step may become. Names that cannot be typed are left out.
  void AddKind(const std::string& keyword, std::size_t count, const char* what = "section");
  void AddName(const std::string& name, const std::string& description, const char* rest = "");
  void AddOrdinal(std::size_t ordinal, const std::string& description, const char* rest = "");
  void AddId(std::uint32_t id, const std::string& description, const char* rest = "");
  void AddSection(const SectionWord& section);

  std::vector<Candidate> TakeWords() { return std::move(words_); }

 private:
  void Add(const std::string& step, const std::string& description, const char* rest);

  std::string front_;  // the finished steps and the slash after them
  char next_;          // the first character of the step being typed; zero: there is none yet
  std::vector<inspect::PathStep> steps_;
  std::vector<Candidate> words_;
};

}  // namespace rux::tool

#endif  // TOOL_COMPLETION_TYPED_PATH_H_
