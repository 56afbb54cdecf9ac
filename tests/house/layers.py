#!/usr/bin/env python3
"""Which folder may include what: every include line of the project's code against one table. And that a source file includes the
header of its name first, which shows that the header compiles alone.

usage: layers.py ROOT
"""
import re
import sys
from pathlib import Path

BELOW = {"basic", "controls", "platform"}
PROGRAM = {"core", "feed", "scan", "bars", "alert", "records", "settings", "reports", "info"}

# Folder -> the folders whose headers it may include besides its own. "src" and "mirror" are the top folders, which contain main.cpp.
ALLOWED = {
    "common": set(),
    "transfer": {"common"},
    "src/basic": set(),
    "src/controls": {"basic"},
    "src/platform": {"basic", "controls"},
    **{f"src/{folder}": BELOW | PROGRAM for folder in PROGRAM},
    "src/feed": BELOW | PROGRAM | {"common"},
    "src/desktop": BELOW | {"core", "bars", "feed", "records", "settings", "reports", "info", "common", "transfer"},
    "src": {"core", "desktop"},
    "mirror/log": set(),
    "mirror/http": {"common"},
    "mirror/catalogue": set(),
    "mirror/feeds": {"catalogue", "log", "transfer"},
    "mirror/live": {"catalogue", "feeds", "log", "store"},
    "mirror/pages": {"catalogue", "http", "common"},
    "mirror/store": {"log"},
    "mirror/service": {"http", "log", "store", "common"},
    "mirror/monitoring": {"http", "feeds"},
    "mirror": {"log", "http", "catalogue", "feeds", "live", "monitoring", "pages", "store", "service", "common", "transfer"},
}

# Only these may use Qt, libcurl and the operating system; everything else is standard C++.
USE_THE_HOST = {"transfer", "src/desktop", "mirror", "mirror/log", "mirror/http", "mirror/catalogue", "mirror/feeds", "mirror/live",
                "mirror/monitoring", "mirror/pages", "mirror/store", "mirror/service"}

# A window's header declares its controls; it never includes another window's header. conffrm has the HTTP client control.
WINDOWS = {"frmRecords", "conffrm", "Form1", "newTagFrm", "frmQalert", "ComPart", "Aboutfrm", "banner", "nobotherfrm"}
WINDOW_MAY_INCLUDE = re.compile(r"(basic|controls)/|feed/inet\.h$")

INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
STANDARD_HEADER = re.compile(r"[a-z_]+$")


def layer_of(path):
    """The row of the table for a file such as src/desktop/widgets/x.cpp."""
    return "/".join(path.parts[:2]) if len(path.parts) > 2 else path.parts[0]


def own_name(layer):
    """How the files of a layer name their own folder in an include: "feed" for src/feed, "common" for common."""
    return layer.partition("/")[2] or layer


def folder_of_include(layer, target):
    """The folder of an include in quotes, by its name in the table."""
    return target.partition("/")[0] if "/" in target else own_name(layer)


def fault_of_include(path, bracket, target):
    """Why the file must not include the target, or None."""
    layer = layer_of(path)
    if layer not in ALLOWED:
        return f"the folder {layer} has no row in the table"
    if bracket == "<":
        if layer not in USE_THE_HOST and not STANDARD_HEADER.match(target):
            return f"{layer} uses standard C++ only, not <{target}>"
        return None
    if path.suffix == ".h" and path.stem in WINDOWS and layer != "src/desktop" and not WINDOW_MAY_INCLUDE.match(target):
        return f'a window\'s header includes only controls/, basic/ and feed/inet.h, not "{target}"'
    folder = folder_of_include(layer, target)
    if folder != own_name(layer) and folder not in ALLOWED[layer]:
        return f'{layer} must not include "{target}"'
    return None


def rule_of(layer, folder):
    """What a permission is called. The folders of the program share those for one another and for what is below them all."""
    if layer.removeprefix("src/") not in PROGRAM or folder not in BELOW | PROGRAM:
        return layer, folder
    return "the program's folders", "one another" if folder in PROGRAM else folder


def includes(root):
    """Each include line of the project: the file's path, the line's number, bracket and target."""
    for top in ("common", "transfer", "src", "mirror"):
        for file in sorted((root / top).rglob("*")):
            if file.suffix in (".h", ".cpp"):
                for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                    match = INCLUDE.match(line)
                    if match:
                        yield file.relative_to(root), number, *match.groups()


def header_not_first(root, lines):
    """The source files that include another header in front of the one beside them."""
    first = {}
    for path, _, _, target in lines:
        first.setdefault(path, Path(target).name)
    for path, target in first.items():
        header = path.with_suffix(".h")
        if path.suffix == ".cpp" and (root / header).is_file() and target != header.name:
            yield f"{path} does not include {header.name} first"


def faults(root):
    lines = list(includes(root))
    if not lines:
        yield f"no include lines under {root}"
    for path, number, bracket, target in lines:
        fault = fault_of_include(path, bracket, target)
        if fault:
            yield f"{path}:{number}: {fault}"
    yield from header_not_first(root, lines)


def unneeded(root):
    """What the table allows and no file does."""
    lines = list(includes(root))
    used = {rule_of(layer_of(path), folder_of_include(layer_of(path), target)) for path, _, bracket, target in lines if bracket == '"'}
    for layer in sorted(ALLOWED):
        for folder in sorted(ALLOWED[layer]):
            rule = rule_of(layer, folder)
            if rule not in used:
                yield f"the table allows {rule[0]} to include {rule[1]}, which no file does"
    using = {layer_of(path) for path, _, bracket, target in lines if bracket == "<" and not STANDARD_HEADER.match(target)}
    for layer in sorted(USE_THE_HOST - using):
        yield f"the table allows {layer} to use the host, which it does not"
    headers = {file.stem for file in (root / "src").rglob("*.h")}
    for window in sorted(WINDOWS - headers):
        yield f"the table names the window {window}, which does not exist"


if __name__ == "__main__":
    root = Path(sys.argv[1])
    found = list(dict.fromkeys([*faults(root), *unneeded(root)]))
    print("\n".join(found))
    sys.exit(1 if found else 0)
