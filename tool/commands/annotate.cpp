// rux annotate MACHINE < LOG
#include <unistd.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "browse/log_filter.h"
#include "machine/machine.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/standard_streams.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/machine_arguments.h"

namespace rux::tool {
namespace {

struct AnnotateOptions {
  MachineOptions machine;
  std::vector<std::string> patterns;
  bool unbuffered = false;
};

support::ExitStatus Annotate(const AnnotateOptions& options) {
  std::vector<browse::LogPattern> patterns = browse::PatternsOf(options.patterns);
  if (options.machine.file == "-") {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "standard input is the log; give the name of the machine's file");
  }
  const machine::Machine machine = LoadMachine(options.machine);
  browse::LogFilter filter(machine, std::move(patterns));
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    std::array<char, std::size_t{1} << 16> bytes;
    while (true) {
      const ssize_t count = support::ReadPiece(STDIN_FILENO, bytes.data(), bytes.size());
      if (count < 0) throw support::SystemFailure("cannot read", "standard input");
      if (count == 0) return filter.End(out);
      filter.Add(std::string_view(bytes.data(), static_cast<std::size_t>(count)), out);
      if (options.unbuffered) out.Flush();
    }
  });
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpAnnotate(Arguments& arguments) {
  const auto options = std::make_shared<AnnotateOptions>();
  AddMachine(arguments, options->machine);
  arguments
      .Add("--pattern", &options->patterns,
           "Where the log names a sensor: a text with {name}, {id} or {hex} in it (default: {name} "
           "and 0x{hex})")
      .Value("TEXT");
  arguments.Add("-u,--unbuffered", &options->unbuffered, "Write each line as soon as it is read");
  AddSearchOptions(arguments, options->machine);
  arguments.Footer(
      "Copies standard input to standard output, and adds ID, name, limits and script line after\n"
      "each sensor. {id} is a decimal number, or a hexadecimal one after 0x; {hex} has "
      "hexadecimal\n"
      "digits.\n\n"
      "Examples:\n"
      "  rux annotate server.metad < /var/log/monitor.log\n"
      "  journalctl -f | rux annotate -u server.metad --pattern 'sensor {id}:'");
  return [options] { return Annotate(*options); };
}

}  // namespace rux::tool
