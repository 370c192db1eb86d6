#include "support/markup_text.h"

#include <string>
#include <string_view>

namespace rux::support {
namespace {

constexpr std::string_view kHtmlHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>)";
constexpr std::string_view kHtmlStyle = R"(</title>
<style>
body { font-family: sans-serif; margin: 2em; }
table { border-collapse: collapse; }
th, td { border: 1px solid #999; padding: 0.3em 0.6em; text-align: left; }
tr.fails td { background: #fdd; color: #000; }
</style>
</head>
<body>
<h1>)";

}  // namespace

std::string MarkupText(std::string_view safe_text) {
  std::string escaped;
  for (const char c : safe_text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string MarkdownText(std::string_view safe_text) {
  std::string escaped;
  for (const char c : safe_text) {
    if (std::string_view("\\`*_{}[]<#|~&").find(c) != std::string_view::npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

std::string HtmlHead(std::string_view safe_title) {
  const std::string title = MarkupText(safe_title);
  return std::string(kHtmlHead).append(title).append(kHtmlStyle).append(title).append("</h1>\n");
}

}  // namespace rux::support
