// Diagnostics that the reports of several scripts have in common: they are printed once, or marked
// in forms that stay complete.
//
// A report marks what it prints about a file that other scripts may include, too, with characters
// that are escaped in every text.
#ifndef DIAGNOSTICS_REPEATED_H_
#define DIAGNOSTICS_REPEATED_H_

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "support/text_stream.h"

namespace rux::diagnostics {

struct Report;

// How many other scripts have a diagnostic, as a line about it says it.
inline constexpr std::string_view kOthers = "\x1E";

// Around what is printed about a diagnostic of a report.
class Repeatable {
 public:
  // `line`: what is printed in the end when other scripts have it, with kOthers in it.
  // `is_piece`: of what is printed about several scripts.
  Repeatable(const Report& report, bool is_piece, const Diagnostic& diagnostic,
             std::string_view line, support::TextStream& out);
  ~Repeatable();
  Repeatable(const Repeatable&) = delete;
  Repeatable& operator=(const Repeatable&) = delete;

  // What is printed from now on is about this script.
  void BeginOwn();

 private:
  const bool is_marked_;
  bool is_own_ = false;
  support::TextStream& out_;
};

// Whether the diagnostic is about a file that other scripts may include.
bool MayBeRepeated(const Report& report, const Diagnostic& diagnostic);

// In a form that stays complete: what write_common() prints is compared with what other scripts
// print. Of the others, one remains: write_first(), or write_again() when it was printed before.
using WritePart = std::function<void()>;
void WriteComparable(support::TextStream& out, const WritePart& write_common,
                     const WritePart& write_first, const WritePart& write_again);

// What the reports of several scripts print, one after the other.
class RepeatedOnce {
 public:
  // Takes out the marks, what was printed before, and what does not apply.
  std::string Without(std::string_view printed);

  // The lines about what was taken out.
  std::string Lines() const;

 private:
  // Each takes what follows the mark off the text that is left.
  void TakeRepeated(std::string_view& left, std::string& text);
  void ChooseAlternative(std::string_view& left, std::string& text);

  std::set<std::string, std::less<>> compared_;                   // what was printed
  std::map<std::string, std::size_t, std::less<>> places_;        // by what is printed
  std::vector<std::pair<std::string, std::size_t>> repetitions_;  // lines, and how many others
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_REPEATED_H_
