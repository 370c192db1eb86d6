// A sound meta file as a read model.
#ifndef COMPILED_READ_MODEL_H_
#define COMPILED_READ_MODEL_H_

#include <string>

#include "ruxcomp/model.h"

namespace rux::compiled {

// The model that the library would have after a gcInit of a file of these bytes, made without it:
// the file needs no path, and no records are made for everything in it. The bytes must be sound.
ruxcomp::Model ReadModel(std::string bytes);

}  // namespace rux::compiled

#endif  // COMPILED_READ_MODEL_H_
