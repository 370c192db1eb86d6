// What is known of a machine beside what it is, from the files that it is read from.
#ifndef PAGE_BACKGROUND_H_
#define PAGE_BACKGROUND_H_

#include <string>

#include "machine/load.h"
#include "machine/machine.h"
#include "page/contents.h"

namespace rux::page {

// `name`: what the machine was loaded from. A script is checked, in this process. Throws a Failure.
Background BackgroundOf(const std::string& name, const machine::LoadOptions& options);

}  // namespace rux::page

#endif  // PAGE_BACKGROUND_H_
