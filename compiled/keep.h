// How much is kept of a compiled file that is decoded.
#ifndef COMPILED_KEEP_H_
#define COMPILED_KEEP_H_

namespace rux::compiled {

// The pieces that records are made of take several times the memory of the file. Without them, all
// lists of pieces are empty.
enum class Keep { kRecords, kPieces };

}  // namespace rux::compiled

#endif  // COMPILED_KEEP_H_
