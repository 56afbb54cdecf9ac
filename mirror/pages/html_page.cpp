#include "pages/html_page.h"

#include "pages/text.h"

namespace borvane::mirror {

namespace {

constexpr const char *style = R"(
:root { color-scheme: light dark; --ink: #1b1f24; --paper: #fff; --line: #c9ced6; --quiet: #5a6472; --quake: #c4321c; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e6e8eb; --paper: #16191d; --line: #3d444d; --quiet: #9aa4b1; --quake: #ff6b4f; }
}
body { max-width: 44rem; margin: 2rem auto; padding: 0 1rem; font: 1rem/1.5 sans-serif; }
body { color: var(--ink); background: var(--paper); }
h1 { font-size: 1.5rem; line-height: 1.25; }
dl { display: grid; grid-template-columns: max-content 1fr; gap: .25rem 1.5rem; }
dt { color: var(--quiet); }
dd { margin: 0; }
a { color: inherit; }
figure { margin: 1.5rem 0; }
figcaption, footer { color: var(--quiet); font-size: .875rem; }
svg { max-width: 100%; height: auto; }
)";

}  // namespace

QByteArray HtmlPage(const QString &title, const QByteArray &body) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"windows-1252\"/>\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n<title>" +
         HtmlText(title) + "</title>\n<style>" + style + "</style>\n</head>\n<body>\n" + body + "</body>\n</html>\n";
}

}  // namespace borvane::mirror
