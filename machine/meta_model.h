// The read model of a meta file.
#ifndef MACHINE_META_MODEL_H_
#define MACHINE_META_MODEL_H_

#include <string>
#include <string_view>

#include "ruxcomp/model.h"

namespace rux::machine {

// Of the bytes of the file, in place. Throws a Failure when they are not those of a sound meta
// file. In a source of its own: beside other code, the compiler inlines less of the verification,
// which is nearly all that a look-up costs.
ruxcomp::Model OpenModel(const std::string& path, std::string_view bytes);

}  // namespace rux::machine

#endif  // MACHINE_META_MODEL_H_
