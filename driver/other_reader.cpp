#include "driver/other_reader.h"

#include "run/readers.h"
#include "run/run.h"
#include "support/failure.h"

namespace rux::driver {

void RefuseOtherReader(const char* what) {
  if (!run::IsForeignReaderInstalled()) return;
  throw support::Failure(support::ExitStatus::kTrouble,
                         "cannot {}: the reader plug-in {} reads only files", what,
                         run::kPluginPath);
}

}  // namespace rux::driver
