// Small damage to a file, exhaustively.
#ifndef TESTS_DAMAGE_DAMAGES_H_
#define TESTS_DAMAGE_DAMAGES_H_

#include <cstddef>
#include <string>

enum class Damage {
  kCut,   // every shorter length, 0 included
  kBit,   // every single bit of the first 4 KiB flipped
  kWord,  // every aligned word set to each of eight extreme numbers
};

// All cases of one damage to one file.
class Damages {
 public:
  Damages(std::string file, Damage damage);

  std::size_t size() const { return size_; }
  // The i-th damaged file. A word may happen to have its extreme number already: that one is whole.
  std::string At(std::size_t i) const;
  // What was done to it, for people.
  std::string Name(std::size_t i) const;

 private:
  const std::string file_;
  const Damage damage_;
  std::size_t size_ = 0;
};

#endif  // TESTS_DAMAGE_DAMAGES_H_
