#!/usr/bin/env python3
"""Which folder may include what: every include line of src/ and mirror/ against one table.

usage: layers.py ROOT
"""
import re
import sys
from pathlib import Path

BELOW = {"basic", "controls", "platform"}
PROGRAM = {"core", "feed", "scan", "bars", "alert", "records", "settings", "reports", "info"}

# Folder -> the folders whose headers it may include besides its own. "" is the folder's own top, where main.cpp lies.
ALLOWED = {
    "src/basic": set(),
    "src/controls": {"basic"},
    "src/platform": {"basic", "controls"},
    **{f"src/{folder}": BELOW | PROGRAM for folder in PROGRAM},
    # Of the mirror only attendance.h, which both programs share.
    "src/desktop": BELOW | PROGRAM | {"mirror"},
    "src": BELOW | PROGRAM | {"desktop"},
    "mirror/http": set(),
    "mirror/catalogue": {"basic"},
    "mirror/pages": {"basic", "catalogue"},
    "mirror/service": {"basic"},
    "mirror": {"basic", "http", "catalogue", "pages", "service"},
}

# Only these may know Qt, libcurl and the operating system; all else is standard C++.
KNOW_THE_HOST = {"src/desktop", "src", "mirror", "mirror/http", "mirror/catalogue", "mirror/pages", "mirror/service"}

# A window's header shows its controls; it never includes another window's header. conffrm holds the HTTP client control.
WINDOWS = {"frmRecords", "conffrm", "Form1", "newTagFrm", "frmQalert", "ComPart", "Aboutfrm", "banner", "nobotherfrm"}
WINDOW_MAY_INCLUDE = re.compile(r"(basic|controls)/|feed/inet\.h$")

INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
STANDARD_HEADER = re.compile(r"[a-z_]+$")


def layer_of(path):
    """The row of the table for a file such as src/desktop/widgets/x.cpp."""
    return "/".join(path.parts[:2]) if len(path.parts) > 2 else path.parts[0]


def fault_of_include(path, bracket, target):
    """Why the file must not include the target, or None."""
    layer = layer_of(path)
    if layer not in ALLOWED:
        return f"the folder {layer} has no row in the table"
    if bracket == "<":
        if layer not in KNOW_THE_HOST and not STANDARD_HEADER.match(target):
            return f"{layer} knows standard C++ only, not <{target}>"
        return None
    if path.suffix == ".h" and path.stem in WINDOWS and layer != "src/desktop" and not WINDOW_MAY_INCLUDE.match(target):
        return f'a window\'s header includes only controls/, basic/ and feed/inet.h, not "{target}"'
    own = layer.partition("/")[2]
    folder = target.partition("/")[0] if "/" in target else own
    if folder != own and folder not in ALLOWED[layer]:
        return f'{layer} must not include "{target}"'
    return None


def faults(root):
    files = [f for top in ("src", "mirror") for f in sorted((root / top).rglob("*")) if f.suffix in (".h", ".cpp")]
    if not files:
        yield f"no source files under {root}"
    for file in files:
        path = file.relative_to(root)
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            fault = match and fault_of_include(path, *match.groups())
            if fault:
                yield f"{path}:{number}: {fault}"


if __name__ == "__main__":
    found = list(faults(Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
