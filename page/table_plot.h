// The cells of a table as a drawing.
#ifndef PAGE_TABLE_PLOT_H_
#define PAGE_TABLE_PLOT_H_

#include <optional>

#include "page/html.h"
#include "page/sources.h"
#include "ruxcomp/model.h"

namespace rux::page {

// All cells as one line over their indices; below it, which cells the rows of the script set, if
// the script is known.
void WritePlot(const ruxcomp::TableCells& cells, const std::optional<Excerpt>& source, Html& out);

}  // namespace rux::page

#endif  // PAGE_TABLE_PLOT_H_
