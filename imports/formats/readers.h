// The formats, one file each: Format::read says what all of them do.
#ifndef IMPORTS_FORMATS_READERS_H_
#define IMPORTS_FORMATS_READERS_H_

#include "imports/board.h"
#include "imports/formats.h"
#include "losses/ledger.h"

namespace rux::imports {

Board ReadCsvTable(const Sources& sources, const ReadOptions& options, losses::Ledger& ledger);
Board ReadEntityManager(const Sources& sources, const ReadOptions& options, losses::Ledger& ledger);
Board ReadDeviceTree(const Sources& sources, const ReadOptions& options, losses::Ledger& ledger);
Board ReadDeviceTreeSource(const Sources& sources, const ReadOptions& options,
                           losses::Ledger& ledger);
Board ReadFreeIpmi(const Sources& sources, const ReadOptions& options, losses::Ledger& ledger);
Board ReadLmSensors(const Sources& sources, const ReadOptions& options, losses::Ledger& ledger);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_READERS_H_
