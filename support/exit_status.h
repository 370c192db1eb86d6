// What every command of rux answers to the shell.
#ifndef SUPPORT_EXIT_STATUS_H_
#define SUPPORT_EXIT_STATUS_H_

namespace rux::support {

enum class ExitStatus {
  kDone = 0,
  kFindings = 1,    // the script has errors; what was asked for is not there
  kWrongUsage = 2,  // the command line makes no sense
  kTrouble = 3,     // a file cannot be read or written, or is damaged
};

}  // namespace rux::support

#endif  // SUPPORT_EXIT_STATUS_H_
