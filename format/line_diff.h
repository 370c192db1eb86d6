// The difference between a text and its formatted form.
#ifndef FORMAT_LINE_DIFF_H_
#define FORMAT_LINE_DIFF_H_

#include <string>
#include <string_view>

namespace rux::format {

// Whether lines without anything on them may be added and removed, or all stay where they are.
enum class EmptyLines { kMove, kStay };

// As a unified diff with three lines of context, which patch and git apply take; empty when the
// texts are the same. The lines with anything on them are the same ones in the same order, however
// they look.
std::string UnifiedDiff(std::string_view path, std::string_view text, std::string_view formatted,
                        EmptyLines empty_lines = EmptyLines::kMove);

}  // namespace rux::format

#endif  // FORMAT_LINE_DIFF_H_
