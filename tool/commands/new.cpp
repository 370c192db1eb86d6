// rux new DIR
#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "imports/board.h"
#include "imports/folder.h"
#include "imports/layout.h"
#include "imports/skeleton.h"
#include "imports/sound.h"
#include "losses/ledger.h"
#include "support/failure.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

struct NewOptions {
  std::string folder;
  imports::SkeletonOptions skeleton;
};

support::ExitStatus New(NewOptions options) {
  const std::string folder = imports::WithoutSlashAtEnd(options.folder);
  if (options.skeleton.model.empty())
    options.skeleton.model = std::filesystem::absolute(folder).lexically_normal().filename();
  const imports::Board board = imports::SkeletonOf(options.skeleton);
  losses::Ledger ledger;
  const std::vector<imports::ScriptFile> files = imports::LayOut(board, {}, ledger);
  imports::ExpectNew(folder, files);
  imports::ExpectSound(folder, files);
  imports::PutInFolder(folder, files);
  support::PrintError(fmt::format("{}: {}, {}\n",
                                  support::SafePath(imports::PathIn(folder, imports::kMainScript)),
                                  support::CountText(board.areas.size(), "group"),
                                  support::CountText(board.sensors.size(), "sensor")));
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpNew(Arguments& arguments) {
  const auto options = std::make_shared<NewOptions>();
  arguments.Add("DIR", &options->folder, "The folder of the scripts").Required();
  arguments
      .Add("--model", &options->skeleton.model, "The MODEL of the machine (default: DIR's name)")
      .Value("TEXT");
  arguments
      .Add("--group", &options->skeleton.groups,
           "A group, after those that it is in, such as BOARD/CPU0 (default: BOARD)")
      .Value("PATH");
  arguments
      .Add(
          "--sensor", &options->skeleton.sensors,
          "A sensor and what it measures: temperature, voltage, current, fan, power, energy, "
          "humidity, pressure, share or other; without a group, it is in that of the first --group")
      .Value("[GROUP/]NAME=QUANTITY");
  arguments.Add("--device", &options->skeleton.devices, "A device").Value("NAME");
  arguments.Footer(
      "Each option may be given more than once. DIR/main.rux is the main script; it passes rux "
      "check.\n"
      "Files that are there already stay as they are, and nothing is written then.\n\n"
      "Examples:\n"
      "  rux new boards/server\n"
      "  rux new boards/server --group BOARD/CPU0 --sensor BOARD/CPU0/CPU0_TEMP=temperature\n"
      "  rux new boards/psu --model \"Power supply\" --sensor FAN1=fan --device PSU");
  return [options] { return New(*options); };
}

}  // namespace rux::tool
