#include "service/product_page.h"

namespace borvane::mirror {

namespace {

constexpr const char *head =
    R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="windows-1252"/>
<meta name="viewport" content="width=device-width"/>
<title>Borvane</title>
<style>
body { font: 1.1em/1.5 sans-serif; max-width: 38em; margin: 2em auto; padding: 0 1em; color: #222; background: #fff }
h1 { margin: 0; font-size: 2.4em; color: #a33c1e }
.facts { padding: 0.6em 1em; border-left: 0.3em solid #a33c1e; background: #f6f1ea }
a { color: #8a2f14 }
</style>
</head>
<body>
<h1>Borvane</h1>
<p>Borvane watches recent earthquakes for you. Choose one of 25 areas, and the newest events stand in a list on your
desktop, the last one with its magnitude in the window's title. Two small bars at the edge of the screen keep it in sight,
and an alert rings when the ground shakes harder than you allow.</p>
<p>When you felt one, say so: a report takes a minute, and shows you what others nearby have felt.</p>
)";

/// How many use Borvane, in words.
QByteArray OnlineText(const QByteArray &online) {
  if (online.isEmpty())
    return "How many users are online is not known at the moment.";
  return online == "1" ? "1 user is online." : online + " users are online.";
}

}  // namespace

QByteArray ProductPage(const QString &newest_version, const QByteArray &online) {
  return head +
         ("<p class=\"facts\">The newest version is <strong>" + newest_version.toLatin1() + "</strong>.<br/>\n") +
         OnlineText(online) + "</p>\n<p><a href=\"/\">All list pages</a></p>\n</body>\n</html>\n";
}

}  // namespace borvane::mirror
