// The bytes of compiled files, whose names need no qualification in this room.
#ifndef COMPILED_FILE_H_
#define COMPILED_FILE_H_

#include "ruxcomp/file/header.h"
#include "ruxcomp/file/views.h"

namespace rux::compiled {

using namespace ruxcomp::file;
namespace language = ruxcomp::language;

// How much is kept of a compiled file that is decoded. The pieces that records are made of take
// several times the memory of the file. Without them, all lists of pieces are empty.
enum class Keep { kRecords, kPieces };

}  // namespace rux::compiled

#endif  // COMPILED_FILE_H_
