// Whether a file would be replaced by the same bytes.
#ifndef DRIVER_UNCHANGED_H_
#define DRIVER_UNCHANGED_H_

#include "support/placement.h"

namespace rux::driver {

// Whether a file with these bytes is there already. Of compiled files the time of creation only
// counts if `counts_time`. What cannot be read is another file.
bool HasSameContent(const support::NewFile& file, bool counts_time);

}  // namespace rux::driver

#endif  // DRIVER_UNCHANGED_H_
