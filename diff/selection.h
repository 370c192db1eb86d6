// Which changes are reported, and which are not accepted.
#ifndef DIFF_SELECTION_H_
#define DIFF_SELECTION_H_

#include <string>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "machine/machine.h"

namespace rux::diff {

// Throws a Failure of wrong usage for a word that selects nothing in these machines, whatever has
// changed: it is neither a kind, a category nor a class, and none of their sections has that NAME.
void CheckOnly(const std::vector<std::string>& only, const std::vector<machine::Machine>& machines);

// Leaves those that have one of these: the kind or NAME of their section, their category or their
// class; a NAME may be a pattern as shells have it. Without any, leaves all.
void KeepOnly(const std::vector<std::string>& only, std::vector<Change>& changes);

// The classes that a word means: those of a category with those nested in it, a class by its id, or
// all for this one. Throws a Failure of wrong usage that says what may be meant.
inline constexpr char kAnyClass[] = "any";
std::vector<const ClassRow*> ClassesFor(const std::vector<std::string>& words);

// Changes that are accepted: a file with the class, kind, ID, NAME and entry of each, and the
// fingerprint of all that, by which they are found.
//
//   docs/diff-baseline.schema.json
class Accepted {
 public:
  // Throws a Failure for a file that cannot be read or is of another form.
  explicit Accepted(const std::string& path);

  // Takes those that it has out of the changes, and returns how many.
  std::size_t TakeFrom(std::vector<Change>& changes) const;
  // A line for each that is not among the changes: empty when all are.
  std::string UnmatchedText(const std::vector<Change>& changes) const;

 private:
  struct Entry {
    std::string fingerprint;
    std::string text;  // for people
  };

  const std::string path_;
  std::vector<Entry> entries_;
};

// The file that accepts the changes.
std::string AcceptedText(const std::vector<Change>& changes);

}  // namespace rux::diff

#endif  // DIFF_SELECTION_H_
