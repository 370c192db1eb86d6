// The XML that CI servers read as results of tests: tests/tool/schemas/junit.xsd.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "diagnostics/report.h"
#include "findings/message_row.h"
#include "support/markup_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::diagnostics {
namespace {

constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"rux\">\n";
constexpr std::string_view kTail = "</testsuites>\n";

std::string Attribute(std::string_view name, std::string_view text) {
  return fmt::format(" {}=\"{}\"", name, support::MarkupText(support::SafeText(text)));
}

// The tests of one script.
class Suite {
 public:
  Suite(const Report& report, support::TextStream& out)
      : report_(report), out_(out), class_(Attribute("classname", report.script)) {}

  void Write() {
    const std::size_t failures = CountFailures();
    const std::size_t errors = report_.is_complete ? 0 : 1;
    std::vector<std::string> passed = report_.passed;
    if (passed.empty() && failures + errors == 0) passed = {"no errors, no warnings"};
    out_ += fmt::format("  <testsuite{} tests=\"{}\" failures=\"{}\" errors=\"{}\">\n",
                        Attribute("name", report_.script), passed.size() + failures + errors,
                        failures, errors);
    WriteProperties();
    for (const std::string& name : passed)
      out_ += fmt::format("    <testcase{}{}/>\n", class_, Attribute("name", name));
    for (const Diagnostic& diagnostic : report_.diagnostics) {
      if (diagnostic.severity != Severity::kNote) WriteFailed(diagnostic);
    }
    if (report_.not_shown > 0) WriteNotShown();
    if (!report_.is_complete) WriteTrouble();
    out_ += "  </testsuite>\n";
  }

 private:
  void WriteProperties() {
    if (report_.properties.empty()) return;
    out_ += "    <properties>\n";
    for (const auto& [name, value] : report_.properties) {
      out_ += fmt::format("      <property{}{}/>\n", Attribute("name", name),
                          Attribute("value", value));
    }
    out_ += "    </properties>\n";
  }

  std::size_t CountFailures() const {
    const auto shown = std::count_if(
        report_.diagnostics.begin(), report_.diagnostics.end(),
        [](const Diagnostic& diagnostic) { return diagnostic.severity != Severity::kNote; });
    return static_cast<std::size_t>(shown) + (report_.not_shown > 0 ? 1 : 0);
  }

  // Without a name, the test has that of its whole message: servers take tests with one name for
  // one test.
  void WriteFailed(const Diagnostic& diagnostic) {
    std::string lines =
        support::WrittenText([&](support::TextStream& text) { WriteGccLines(diagnostic, text); });
    lines.pop_back();
    const Location& at = diagnostic.at;
    const std::string name =
        diagnostic.test.empty() ? lines.substr(0, lines.find('\n')) : diagnostic.test;
    std::string place;
    if (!at.path.empty()) place += Attribute("file", at.path);
    if (at.line() != 0) place += fmt::format(" line=\"{}\"", at.line());
    out_ += fmt::format("    <testcase{}{}{}>\n      <failure{}{}>{}</failure>\n    </testcase>\n",
                        class_, Attribute("name", name), place,
                        Attribute("type", WordOf(diagnostic.severity)),
                        Attribute("message", WholeText(diagnostic)), support::MarkupText(lines));
  }

  void WriteNotShown() {
    out_ += fmt::format("    <testcase{}{}>\n      <failure{}{}/>\n    </testcase>\n", class_,
                        Attribute("name", "not shown"), Attribute("type", "not-shown"),
                        Attribute("message", NotShownText(report_.not_shown)));
  }

  void WriteTrouble() {
    out_ += fmt::format("    <testcase{}{}>\n      <error{}{}/>\n    </testcase>\n", class_,
                        Attribute("name", "processed"), Attribute("type", "trouble"),
                        Attribute("message", "not processed to the end; see standard error"));
  }

  const Report& report_;
  support::TextStream& out_;
  const std::string class_;
};

}  // namespace

void WriteJunitPiece(const Report& report, support::TextStream& out) { Suite(report, out).Write(); }

void WriteJunitReport(const Report& report, support::TextStream& out) {
  out += kHead;
  WriteJunitPiece(report, out);
  out += kTail;
}

void WriteJunitReports(const Pieces& pieces, support::TextStream& out) {
  out += kHead;
  WriteInARow(pieces, out);
  out += kTail;
}

}  // namespace rux::diagnostics
