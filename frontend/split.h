// Splitting the text of an entry into its comma-separated parts.
#ifndef FRONTEND_SPLIT_H_
#define FRONTEND_SPLIT_H_

#include <string>
#include <vector>

// Appends the parts of `value` to `items`: as written, blanks included; of a part with a double
// quote, what stands between it and the next quote, commas included, or up to the end of the text
// when there is none. An empty text has no parts; a trailing comma makes an empty last one.
void SplitItems(const std::string& value, std::vector<std::string>& items);

#endif  // FRONTEND_SPLIT_H_
