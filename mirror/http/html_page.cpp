#include "http/html_page.h"

#include <QStringBuilder>

namespace borvane::mirror {

namespace {

constexpr const char *style =
    ":root { color-scheme: light dark; "
    "--ink: #1b1f24; --ground: #fff; --line: #c9ced6; --quiet: #5a6472; --quake: #c4321c; } "
    "@media (prefers-color-scheme: dark) { :root { "
    "--ink: #e6e8eb; --ground: #16191d; --line: #3d444d; --quiet: #9aa4b1; --quake: #ff6b4f; } } "
    "body { max-width: 44rem; margin: 2rem auto; padding: 0 1rem; font: 1rem/1.5 sans-serif; "
    "color: var(--ink); background: var(--ground); } "
    "h1 { font-size: 1.5rem; line-height: 1.25; } "
    "h2 { font-size: 1.125rem; } "
    "dl { display: grid; grid-template-columns: max-content 1fr; gap: .25rem 1.5rem; } "
    "dt { color: var(--quiet); } "
    "dd { margin: 0; } "
    "pre { overflow-x: auto; font-size: .875rem; } "
    "table { border-collapse: collapse; font-variant-numeric: tabular-nums; } "
    "th, td { padding: .125rem .75rem .125rem 0; text-align: left; vertical-align: top; } "
    "th, center { font-weight: normal; color: var(--quiet); } "
    "center { display: inline; } "
    "tt { font-family: inherit; } "
    ".intense { color: var(--quake); } "
    ".plain b { font-weight: normal; } "
    "a { color: inherit; } "
    "figure { margin: 1.5rem 0; } "
    "figcaption, footer { color: var(--quiet); font-size: .875rem; } "
    "svg { max-width: 100%; height: auto; } "
    "@media (max-width: 40rem) { tr { display: block; padding: .25rem 0; } "
    "th, td { display: inline; padding: 0 .25rem 0 0; } "
    "pre { white-space: pre-line; } }";

}  // namespace

QByteArray HtmlPage(const QByteArray &title, const QByteArray &body, const QByteArray &head) {
  return "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"windows-1252\"/>"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/><title>" +
         title + "</title><style>" + style + "</style>" + head + "</head><body>" + body + "</body></html>";
}

}  // namespace borvane::mirror
