// The texts of a table of a meta file, which do not say themselves how many bytes they take.
#ifndef COMPILED_TEXT_BLOCK_H_
#define COMPILED_TEXT_BLOCK_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace rux::compiled {

// How many bytes of a block are texts. `block` is what stands between the length of the block,
// `stated`, and the next block: texts, each with a terminating zero, and padding of 1 to 16 zeros.
// Zeros at the end are padding, unless the stated length makes the first of them an empty text.
// None when there is no padding.
std::optional<std::size_t> SizeOfTexts(std::string_view block, std::size_t stated);

// Why the length of a table of properties may differ from the size of the texts; empty when it does
// not.
std::string LengthNote(std::size_t stated, std::size_t size);

}  // namespace rux::compiled

#endif  // COMPILED_TEXT_BLOCK_H_
