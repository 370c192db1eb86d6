// Texts that a script's file has in several pieces.
#ifndef READER_ARENA_H_
#define READER_ARENA_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace ruxcomp::reader {

// Holds copies of pieces of a file's text, joined, and knows where in the file each byte is from.
class Arena {
 public:
  // `text` must outlive the arena.
  explicit Arena(std::string_view text) : text_(text) {}

  // One text that is made of the pieces, of which there is one at least and none is empty. They are
  // views of the file's text or of the arena. Where there is nothing to join, the piece itself.
  std::string_view Join(const std::vector<std::string_view>& pieces);

  // Where in the file the byte is from that `at` points to. It points into the file's text or to a
  // text of the arena or the byte before it.
  std::uint32_t OffsetOf(const char* at) const;

 private:
  // Blocks do not move: texts are handed out as views. `start` counts the bytes used in earlier
  // blocks.
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::uint32_t size;
    std::uint32_t used;
    std::uint32_t start;
  };
  // From that byte of the arena on, up to the next run, it goes on in the file without a gap.
  struct Run {
    std::uint32_t at;
    std::uint32_t offset;
  };

  bool IsInText(const char* at) const;
  std::uint32_t PositionOf(const char* at) const;
  std::vector<Run>::const_iterator RunAt(std::uint32_t position) const;
  char* Allocate(std::size_t size);
  void AddBlock(std::size_t size);
  void AddRuns(std::string_view piece, std::uint32_t position);

  std::string_view text_;
  std::vector<Block> blocks_;
  std::vector<Run> runs_;
};

}  // namespace ruxcomp::reader

#endif  // READER_ARENA_H_
