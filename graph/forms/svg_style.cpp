#include <fmt/format.h>

#include <string>

#include "graph/forms/svg.h"
#include "graph/graph.h"
#include "ruxcomp/language/sections.h"

namespace rux::graph {
namespace {

// The colours of a kind: its hue, the same in both themes. Kinds that graphs hardly have are grey.
struct Hue {
  language::SectionId kind;
  int degrees;
};
constexpr Hue kHues[] = {
    {language::SECTION_GROUP, 245},   {language::SECTION_SENSOR, 205},
    {language::SECTION_DEVICE, 175},  {language::SECTION_ACTION, 22},
    {language::SECTION_TABLE, 285},   {language::SECTION_PELMGROUP, 140},
    {language::SECTION_GLOBAL, 335},  {language::SECTION_REPEATER, 50},
    {language::SECTION_INCLUDE, 225},
};

std::string HuesText(int fill_saturation, int fill_light, int stroke_saturation, int stroke_light) {
  std::string text;
  for (const Hue& hue : kHues) {
    text += fmt::format(".rux-graph .{} rect{{fill:hsl({},{}%,{}%);stroke:hsl({},{}%,{}%)}}\n",
                        NounOf(language::KindOf(hue.kind)), hue.degrees, fill_saturation,
                        fill_light, hue.degrees, stroke_saturation, stroke_light);
  }
  return text;
}

// As much of the rules as depends on the theme.
struct Theme {
  const char* paper;
  const char* text;
  const char* faint;
  const char* line;
  const char* frame;
  const char* frame_edge;
};

std::string ThemeText(const Theme& theme) {
  return fmt::format(
      ".rux-graph rect{{fill:{};stroke:{}}}\n"
      ".rux-graph .paper{{fill:{};stroke:none}}\n"
      ".rux-graph text{{fill:{}}}\n"
      ".rux-graph .marks,.rux-graph .rest text{{fill:{}}}\n"
      ".rux-graph .line path{{stroke:{}}}\n"
      ".rux-graph .line .arrow{{fill:{}}}\n"
      ".rux-graph .frame rect{{fill:{};stroke:{}}}\n",
      theme.frame, theme.line, theme.paper, theme.text, theme.faint, theme.line, theme.line,
      theme.frame, theme.frame_edge);
}

constexpr Theme kLight{"#ffffff", "#1d2330", "#555d6e", "#767e8f", "#f5f6f9", "#cfd4de"};
constexpr Theme kDark{"#12151c", "#e7eaf1", "#a9b1c2", "#8b94a7", "#1a1f29", "#3a4253"};

}  // namespace

std::string SvgStyle() {
  return ".rux-graph{font:12px ui-monospace,\"DejaVu Sans Mono\",Menlo,Consolas,monospace}\n"
         ".rux-graph .heading{font:600 16px system-ui,\"DejaVu Sans\",sans-serif}\n"
         ".rux-graph .group text,.rux-graph .pelmgroup text{font-weight:600}\n"
         ".rux-graph .legend text,.rux-graph .marks,.rux-graph .rest text{font-weight:400}\n"
         ".rux-graph .line path{fill:none;stroke-width:1.25;stroke-linejoin:round}\n"
         ".rux-graph .bundle path{stroke-width:2}\n"
         ".rux-graph .line .arrow{stroke:none}\n"
         ".rux-graph .center rect{stroke-width:3}\n"
         ".rux-graph .rest rect{fill:none;stroke:#808898;stroke-dasharray:4 3}\n" +
         ThemeText(kLight) + HuesText(80, 93, 50, 38) + "@media (prefers-color-scheme:dark){\n" +
         ThemeText(kDark) + HuesText(38, 19, 50, 62) + "}\n";
}

}  // namespace rux::graph
