#include "graph/forms/svg.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "browse/relations.h"
#include "graph/drawing.h"
#include "graph/forms.h"
#include "graph/geometry.h"
#include "graph/graph.h"
#include "graph/shortcuts.h"
#include "support/markup_text.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::graph {
namespace {

constexpr int kMargin = 24;
constexpr int kRow = 24;       // of the heading and of the legend
constexpr int kBaseline = 16;  // of a text in a row

// KIND/NAME, KIND/KEY or KIND/#ID.
std::string PathOf(const browse::Thing& thing) {
  std::string path = thing.kind->keyword;
  if (!thing.key.empty()) return path + '/' + support::NameInPath(thing.key);
  if (thing.name) return path + '/' + support::NameInPath(*thing.name);
  return thing.id ? path + '/' + support::IdText(*thing.id) : path;
}

std::string Markup(std::string_view text) { return support::MarkupText(support::SafeText(text)); }

std::string RectText(const Box& box, int radius) {
  return fmt::format(R"(<rect x="{}" y="{}" width="{}" height="{}" rx="{}"/>)", box.at.x, box.at.y,
                     box.size.width, box.size.height, radius);
}

class SvgWriter {
 public:
  SvgWriter(const Graph& graph, support::TextStream& out)
      : graph_(graph), drawn_(WithoutShortcuts(graph)), drawing_(Draw(drawn_)), out_(out) {}

  // `style`: what only a file of its own has.
  void Write(std::string_view style) {
    const std::string legend = Legend(style.empty() ? 0 : kRow + kRow / 4);
    const int heading = style.empty() ? 0 : TextWidth(support::SafeText(TitleOf(graph_))) * 4 / 3;
    const int width = std::max({drawing_.size.width, legend_width_, heading}) + 2 * kMargin;
    const int height = below_legend_ + drawing_.size.height + 2 * kMargin;
    out_ += fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" class=\"rux-graph\" role=\"img\" width=\"{0}\" "
        "height=\"{1}\" viewBox=\"0 0 {0} {1}\">\n<title>{2}</title>\n<desc>{3}</desc>\n",
        width, height, Markup(TitleOf(graph_)), Markup(Description()));
    if (!style.empty()) {
      out_ += fmt::format("<style>\n{}</style>\n", style);
      out_ += R"(<rect class="paper" width="100%" height="100%"/>)";
      out_ += '\n';
    }
    out_ += fmt::format("<g transform=\"translate({0} {0})\">\n", kMargin);
    if (!style.empty()) {
      out_ += fmt::format("<text class=\"heading\" x=\"0\" y=\"{}\">{}</text>\n", kBaseline,
                          Markup(TitleOf(graph_)));
    }
    out_ += legend;
    out_ += fmt::format("<g transform=\"translate(0 {})\">\n", below_legend_);
    for (const Line& line : drawing_.lines) WriteLine(line);
    for (const Box& frame : drawing_.frames)
      out_ += "<g class=\"frame\">" + RectText(frame, 8) + "</g>\n";
    for (std::size_t node = 0; node < graph_.nodes.size(); ++node) WriteNode(node);
    out_ += "</g>\n</g>\n</svg>\n";
  }

 private:
  std::string Description() const {
    std::string text = fmt::format("{}, {}", support::CountText(graph_.nodes.size(), "node"),
                                   support::CountText(graph_.edges.size(), "edge"));
    if (const std::string left_out = LeftOutText(graph_); !left_out.empty())
      text += "; " + left_out;
    return text;
  }

  // One entry for each kind, and what is left out.
  std::string Legend(int y) {
    constexpr int kSample = 14;
    constexpr int kGap = 20;
    Counts counts;
    for (const Node& node : graph_.nodes) {
      if (node.rest == 0) ++counts[node.thing.kind];
    }
    std::string text;
    int x = 0;
    const auto add = [&](const std::string& classes, const std::string& words) {
      const int width = TextWidth(words) + kSample + 6;
      if (x > 0 && x + width > std::max(drawing_.size.width, kNarrowest)) {
        x = 0;
        y += kRow;
      }
      const Box box{{x, y + 5}, {kSample, kSample}};
      text += fmt::format("<g class=\"{}\">{}<text x=\"{}\" y=\"{}\">{}</text></g>\n", classes,
                          RectText(box, 4), x + kSample + 6, y + kBaseline, Markup(words));
      x += width + kGap;
      legend_width_ = std::max(legend_width_, x - kGap);
    };
    for (const auto& [kind, count] : counts)
      add("legend " + NounOf(*kind), support::CountText(count, NounOf(*kind)));
    if (const std::string left_out = LeftOutText(graph_); !left_out.empty())
      add("legend rest", left_out);
    if (graph_.nodes.empty()) add("legend", "nothing");
    below_legend_ = y + kRow + kRow / 2;
    return text;
  }

  void WriteLine(const Line& line) {
    const Edge& edge = drawn_.edges[line.edge];
    out_ += line.is_bundle && line.has_arrow ? "<g class=\"line bundle\">" : "<g class=\"line\">";
    if (line.has_arrow) out_ += fmt::format("<title>{}</title>", Markup(ReasonsText(edge)));
    out_ += "<path d=\"";
    char step = 'M';
    for (const Point& point : line.points) {
      out_ += fmt::format("{}{} {}", step, point.x, point.y);
      step = 'L';
    }
    out_ += "\"/>";
    if (line.has_arrow) WriteArrow(line);
    out_ += "</g>\n";
  }

  void WriteArrow(const Line& line) {
    constexpr int kLength = 8;
    const Point tip = line.points.back();
    const Point before = line.points[line.points.size() - 2];
    const int back = before.x < tip.x ? -kLength : kLength;
    out_ += fmt::format("<path class=\"arrow\" d=\"M{} {}l{} -4v8z\"/>", tip.x, tip.y, back);
  }

  void WriteNode(std::size_t number) {
    const Node& node = graph_.nodes[number];
    const Box& box = drawing_.nodes[number];
    const BoxText& text = drawing_.texts[number];
    out_ += fmt::format("<g class=\"node {}{}{}\"", NounOf(*node.thing.kind),
                        node.rest > 0 ? " rest" : "", node.is_center ? " center" : "");
    if (node.rest == 0) out_ += fmt::format(" data-path=\"{}\"", Markup(PathOf(node.thing)));
    out_ += fmt::format("><title>{}</title>{}", Markup(TitleOf(node)), RectText(box, 5));
    out_ += fmt::format("<text x=\"{}\" y=\"{}\">{}", box.at.x + kTextPadding, box.at.y + kBaseline,
                        Markup(text.label));
    if (!text.marks.empty())
      out_ += fmt::format("<tspan class=\"marks\">{}</tspan>", Markup(text.marks));
    out_ += "</text></g>\n";
  }

  static constexpr int kNarrowest = 480;

  const Graph& graph_;
  const Graph drawn_;
  const Drawing drawing_;
  support::TextStream& out_;
  int legend_width_ = 0;
  int below_legend_ = 0;
};

}  // namespace

void WriteSvgElement(const Graph& graph, support::TextStream& out) {
  SvgWriter(graph, out).Write("");
}

void WriteSvg(const Graph& graph, support::TextStream& out) {
  SvgWriter(graph, out).Write(SvgStyle());
}

}  // namespace rux::graph
