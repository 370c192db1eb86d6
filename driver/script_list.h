// What the arguments of a command stand for.
#ifndef DRIVER_SCRIPT_LIST_H_
#define DRIVER_SCRIPT_LIST_H_

#include "driver/compile_options.h"

namespace rux::driver {

// Puts scripts in place of what stands for several: of a folder, the main scripts below it; of
// "@FILE", the scripts and folders that the lines of the file name, where empty lines and those
// that begin with # say nothing ("@-": of standard input). Throws a Failure when one of them stands
// for none or cannot be read.
void ExpandScripts(CompileOptions& options);

// After that, adds the files below folders that several of the main scripts there include and that
// have allow comments: which of these comments are of no use shows only when all are checked.
void AddSharedParts(CompileOptions& options);

// The same as ExpandScripts with whole machines: of a folder, also the compiled files below it that
// have no script beside them.
void ExpandMachines(CompileOptions& options);

// The same as ExpandScripts with all scripts below a folder.
void ExpandAllScripts(CompileOptions& options);

}  // namespace rux::driver

#endif  // DRIVER_SCRIPT_LIST_H_
