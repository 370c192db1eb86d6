// The style and the script of pages: the files of assets/, which the build puts into the program.
#ifndef PAGE_ASSETS_H_
#define PAGE_ASSETS_H_

#include <string_view>

namespace rux::page {

extern const std::string_view kStyle;
extern const std::string_view kScript;

}  // namespace rux::page

#endif  // PAGE_ASSETS_H_
