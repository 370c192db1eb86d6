// Suggestions for a name that does not exist.
#ifndef SUPPORT_NEAREST_H_
#define SUPPORT_NEAREST_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace rux::support {

// The candidates that differ from the wanted text by a few wrong, missing, surplus or swapped
// characters, the nearest first. Case makes no difference.
std::vector<std::string> Nearest(const std::string& wanted,
                                 const std::vector<std::string>& candidates, std::size_t most);

// The one candidate that must have been meant: one wrong character away or, for texts of four
// characters or more, up to `farthest`. Of several as near, the one with the same characters or,
// failing that, the same first one counts; none when that does not decide.
std::optional<std::string> ClosestName(const std::string& wanted,
                                       const std::vector<std::string>& candidates,
                                       std::size_t farthest = 2);

// Whether a name is most likely written as that text: but for case, both have the same characters,
// or one has one more, which is no digit; digits are in the same order.
bool IsSlipOf(const std::string& name, const std::string& written);

// For the end of a message: "; did you mean A or B?". When none is near, the candidates if they are
// few ("; there are: A, B"), or else `lister`, which says how to list them; "; there are none".
std::string NearText(const std::string& wanted, const std::vector<std::string>& candidates,
                     const std::string& lister = "");

}  // namespace rux::support

#endif  // SUPPORT_NEAREST_H_
