// Texts that are in several pieces in a script's file.
#ifndef READER_ARENA_H_
#define READER_ARENA_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace ruxcomp::reader {

// Holds joined copies of pieces of a file's text, and knows where in the file each byte came from.
class Arena {
 public:
  // `text` must outlive the arena.
  explicit Arena(std::string_view text) : text_(text) {}

  std::string_view text() const { return text_; }

  // Joins the pieces to one text; a single piece stays where it is. There is at least one piece,
  // none is empty, and all are views of the file's text or of the arena.
  std::string_view Join(const std::vector<std::string_view>& pieces);

  // The offset in the file of the byte at `at`, which is in the file's text, in a text of the
  // arena, or just before one.
  std::uint32_t OffsetOf(const char* at) const;

 private:
  // Blocks do not move, because texts are handed out as views. `start` counts the bytes used in
  // earlier blocks.
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::uint32_t size;
    std::uint32_t used;
    std::uint32_t start;
  };
  // From byte `at` of the arena up to the next run, the bytes follow each other in the file.
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
