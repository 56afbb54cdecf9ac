"""A separate desk for the real programs: a virtual screen with a window manager, a session bus, a fresh home. Programs are operated
with real keys and clicks and read as a screen reader reads them.

One desk per process: the screen reader's library supports only one session bus. Needs Debian's own /usr/bin/python3.
"""
import contextlib
import ctypes
import os
import re
import select
import shlex
import signal
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

LISTS = ("table", "tree", "tree table")  # the roles of lists; their cells are not controls
TIMEOUT = 60  # seconds until what a test waits for counts as missing; a busy machine is slow

OFFLINE = Path(__file__).resolve().parent.parent / "offline.toml"  # for every mirror, also one that a monitor starts
NO_PROXY_THERE = "http://127.0.0.1:9"  # should a mirror not take notice of it, no request leaves the computer either

FONTS = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts</dir>
  <cachedir>{cache}</cachedir>
  <alias binding="same"><family>sans-serif</family><prefer><family>Liberation Sans</family></prefer></alias>
</fontconfig>
"""


def wait_for(what, condition, timeout=TIMEOUT):
    """Returns what the condition returns as soon as that is true; raises TimeoutError naming `what` when it never is."""
    end = time.monotonic() + timeout
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise TimeoutError(f"waited {timeout} s for {what}")
        time.sleep(0.05)


def at_rest(place):
    """What `place` returns, if it returns it twice with a moment in between; None while the thing moves or is not there. What has just
    opened may still be moved, and a click would miss it."""
    before = place()
    time.sleep(0.1)
    return before if place() == before else None


def _die_with_parent():
    """Makes a started program end with this process, however this one ends."""
    set_parent_death_signal = 1
    ctypes.CDLL(None).prctl(set_parent_death_signal, signal.SIGKILL)


class Desk:
    """Starts the screen on entry, ends everything that it started on exit. `folder` holds the home and the programs' output."""

    def __init__(self, folder, size="1280x1024x24"):
        self.folder = Path(folder).resolve()
        self.home = self.folder / "home"
        self.size = size
        self.programs = []
        # For the sockets of the programs, also of killed ones. Their paths must be short.
        self.sockets = tempfile.mkdtemp(prefix="borvane-desk-")

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for program in reversed(self.programs):
            self.end(program)
        shutil.rmtree(self.sockets, ignore_errors=True)

    @property
    def settings_file(self):
        return self.home / ".config/Nalvorin/Borvane.conf"

    def _start(self):
        runtime = Path(self.sockets) / "runtime"
        for folder in (self.home / ".config", runtime):
            folder.mkdir(parents=True, exist_ok=True)
        runtime.chmod(0o700)
        fonts = self.folder / "fonts.conf"
        fonts.write_text(FONTS.format(cache=self.folder / "fonts"))
        for name in ("WAYLAND_DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "QT_QPA_PLATFORM"):
            os.environ.pop(name, None)
        os.environ.update(
            HOME=str(self.home),
            XDG_CONFIG_HOME=str(self.home / ".config"),
            XDG_CACHE_HOME=str(self.home / ".cache"),
            XDG_DATA_HOME=str(self.home / ".local/share"),
            XDG_RUNTIME_DIR=str(runtime),
            TMPDIR=self.sockets,
            FONTCONFIG_FILE=str(fonts),
            LC_ALL="C.UTF-8",
            TZ="UTC",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            PULSE_SERVER=f"unix:{self.sockets}/no-sound",
            BORVANE_MIRROR_CONFIG=str(OFFLINE),
            https_proxy=NO_PROXY_THERE,
        )
        os.environ["DISPLAY"] = ":" + self._start_screen()
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_and_read(
            "dbus-daemon", "--session", "--nofork", "--nopidfile", option="--print-address")
        # It announces itself before it is ready, and a window that opens in between is never placed on the screen.
        ready = self.folder / "window-manager-is-ready"
        ready.unlink(missing_ok=True)
        self.start("openbox", "--sm-disable", "--startup", f"touch {shlex.quote(str(ready))}")
        wait_for("the window manager", ready.exists)

        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        self.atspi = Atspi
        Atspi.init()
        # It would take a program that is silent for 0.8 s for one that has gone.
        Atspi.set_timeout(1000 * TIMEOUT, 1000 * TIMEOUT)

    def _start_screen(self):
        """Starts a virtual screen and returns its number. It finds a free one, which another that starts or ends may still lock."""
        for attempt in range(3):
            try:
                return self._start_and_read("Xvfb", "-screen", "0", self.size, "-nolisten", "tcp", option="-displayfd")
            except RuntimeError:
                if attempt == 2:
                    raise

    def _start_and_read(self, *command, option):
        """Starts a program that writes one line to the file descriptor in `option`, and returns the line."""
        ours, theirs = os.pipe()
        arguments = [f"{option}={theirs}"] if option.startswith("--") else [option, str(theirs)]
        self.start(*command, *arguments, pass_fds=(theirs,))
        os.close(theirs)
        with open(ours, encoding="ascii") as pipe:
            if not select.select([pipe], [], [], TIMEOUT)[0]:
                raise TimeoutError(f"{command[0]} did not start")
            line = pipe.readline().strip()
        if not line:
            raise RuntimeError(f"{command[0]} ended at its start: {self.output_of(self.programs[-1])}")
        return line

    def start(self, *command, **options):
        """Starts a program; what it prints goes to a file of its own."""
        command = [str(word) for word in command]
        log = self.folder / f"{len(self.programs)}-{Path(command[0]).name}.log"
        with open(log, "wb") as output:
            program = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                                       preexec_fn=_die_with_parent, **options)
        program.log = log
        self.programs.append(program)
        return program

    @staticmethod
    def output_of(program):
        return program.log.read_text(errors="replace")

    @staticmethod
    def end(program):
        """Terminates a program that was started here, and kills it if it does not end."""
        if program.poll() is None:
            program.terminate()
            try:
                program.wait(5)
            except subprocess.TimeoutExpired:
                program.kill()
        program.wait()

    # The X side: windows, keys, clicks, pictures.

    @staticmethod
    def x(*command):
        """Runs an X client to its end and returns its output; empty when it failed."""
        return subprocess.run(command, capture_output=True, text=True, timeout=TIMEOUT).stdout

    def windows(self, program):
        """Title -> window number, for the windows of the program that are on the screen."""
        numbers = self.x("xdotool", "search", "--onlyvisible", "--all", "--pid", str(program.pid), "--name", ".").split()
        titles = ((self.x("xdotool", "getwindowname", number).rstrip("\n"), number) for number in numbers)
        return {title: number for title, number in titles if title}

    def window(self, program, title):
        """The number of the window whose title matches, as soon as it is there."""
        def look():
            return next((number for name, number in self.windows(program).items() if re.search(title, name)), None)
        return wait_for(f"a window titled {title}", look)

    def shown_windows(self, program):
        """The numbers of the program's windows on the screen, also of those without a title, as a menu is."""
        return set(self.x("xdotool", "search", "--onlyvisible", "--all", "--pid", str(program.pid), "--class", ".").split())

    def is_menu(self, number):
        """Whether a window without a title is still there and is no tool tip, which may come and go at any time."""
        kind = self.x("xprop", "-id", number, "_NET_WM_WINDOW_TYPE")
        return kind != "" and "_TOOLTIP" not in kind

    def open_menu(self, program, action):
        """Returns the number of the menu that opens when `action` is done."""
        def menu():
            return next((number for number in self.shown_windows(program) - before if self.is_menu(number)), None)
        before = self.shown_windows(program)
        action()
        return wait_for("the menu", menu)

    def click_entry(self, menu, place, count):
        """Clicks the entry at that place, from 1, of a menu with `count` entries and no line between them."""
        lines = self.x("xdotool", "getwindowgeometry", "--shell", menu).splitlines()
        x, y, width, height = (int(line.partition("=")[2]) for line in lines if re.match("X=|Y=|WIDTH=|HEIGHT=", line))
        self.click_at(x + width // 2, y + height * (2 * place - 1) // (2 * count))

    def stacking(self):
        """The numbers of the windows of all programs, the lowest first."""
        listed = self.x("xprop", "-root", "_NET_CLIENT_LIST_STACKING")
        return [str(int(number, 16)) for number in re.findall(r"0x[0-9a-f]+", listed)]

    def active(self):
        """The number of the window that has the keyboard."""
        return self.x("xdotool", "getactivewindow").strip()

    def activate(self, number):
        """Brings the window to the front and gives it the keyboard focus."""
        def has_the_keyboard():
            # Another window that opens meanwhile may take the keyboard back, so it is requested again.
            self.x("xdotool", "windowactivate", number)
            time.sleep(0.2)
            return self.active() == number
        wait_for("the focus", has_the_keyboard)

    def press(self, *keys):
        """Presses and releases keys, by their X names, in whatever window has the keyboard."""
        for key in keys:
            subprocess.run(["xdotool", "key", "--clearmodifiers", key], check=True, timeout=TIMEOUT)

    def click_at(self, x, y, button=1):
        subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", str(button)], check=True, timeout=TIMEOUT)

    def is_maximized(self, window):
        """Whether the window fills the screen both ways."""
        return {"HORZ", "VERT"} <= set(re.findall(r"_NET_WM_STATE_MAXIMIZED_(\w+)", self.x("xprop", "-id", window, "_NET_WM_STATE")))

    def double_click_title(self, window):
        """Maximises the window, or restores its size. On a busy machine two clicks can be too far apart for a double click."""
        was_maximized = self.is_maximized(window)

        def double_click():
            left, top = (int(number) for number in re.findall(r"Absolute upper-left [XY]: +(-?\d+)", self.x("xwininfo", "-id", window)))
            self.x("xdotool", "mousemove", str(left + 300), str(top - 8), "click", "--repeat", "2", "--delay", "50", "1")
            with contextlib.suppress(TimeoutError):
                return wait_for("the other size", lambda: self.is_maximized(window) != was_maximized, timeout=20)
            return False
        wait_for("a double click on the title", double_click)

    def screenshot(self, path, window="root"):
        """Writes the screen, or one window of it, as a picture."""
        subprocess.run(["import", "-silent", "-window", window, str(path)], check=True, timeout=TIMEOUT)

    # The screen reader's side.

    def application(self, program):
        """The program as the screen reader sees it, or None while it does not."""
        desktop = self.atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(i)
            with contextlib.suppress(self._gone()):
                if application and application.get_process_id() == program.pid:
                    application.set_cache_mask(self.atspi.Cache.NONE)
                    return application
        return None

    @staticmethod
    def _gone():
        """What the library raises for an accessible that disappears while it is read."""
        from gi.repository import GLib
        return GLib.Error

    def _walk(self, accessible):
        """The accessible and all below it, without the cells of lists."""
        yield accessible
        if accessible.get_role_name() in LISTS:
            return
        for i in range(accessible.get_child_count()):
            child = accessible.get_child_at_index(i)
            if child:
                yield from self._walk(child)

    def look(self, program, name=None, role=None):
        """The first showing accessible with that name and role, or None. `role` may be several."""
        roles = (role,) if isinstance(role, str) else role
        application = self.application(program)
        if not application:
            return None
        with contextlib.suppress(self._gone()):
            for accessible in self._walk(application):
                if (name is None or accessible.get_name() == name) and (roles is None or accessible.get_role_name() in roles):
                    if accessible.get_state_set().contains(self.atspi.StateType.SHOWING):
                        return accessible
        return None

    def names(self, program):
        """The names of everything that shows."""
        application = self.application(program)
        found = []
        with contextlib.suppress(self._gone()):
            for accessible in self._walk(application) if application else ():
                if accessible.get_state_set().contains(self.atspi.StateType.SHOWING):
                    found.append(accessible.get_name())
        return found

    def find(self, program, name=None, role=None):
        """The accessible with that name and role, as soon as it shows."""
        return wait_for(f"{role or 'something'} named {name}", lambda: self.look(program, name, role))

    def middle(self, accessible):
        """The middle of the accessible on the screen."""
        extents = accessible.get_component_iface().get_extents(self.atspi.CoordType.SCREEN)
        return extents.x + extents.width // 2, extents.y + extents.height // 2

    def click(self, accessible, button=1):
        """A real click on the middle of the accessible, once that is at rest."""
        self.click_at(*wait_for("a place to click at", lambda: at_rest(lambda: self.middle(accessible))), button)

    def switch_over(self, accessible):
        """Ticks or presses the accessible as assistive software does, without the mouse or a key."""
        actions = accessible.get_action_iface()
        names = [actions.get_action_name(i) for i in range(actions.get_n_actions())]
        actions.do_action(names.index("Toggle"))

    def write(self, accessible, text):
        """Replaces the text of the accessible in the same way."""
        accessible.get_editable_text_iface().set_text_contents(text)

    def is_enabled(self, accessible):
        return accessible.get_state_set().contains(self.atspi.StateType.ENABLED)

    def is_checked(self, accessible):
        states = accessible.get_state_set()
        return states.contains(self.atspi.StateType.CHECKED) or states.contains(self.atspi.StateType.PRESSED)

    def rows(self, accessible):
        """The rows of a list, each a list of the cells' texts; None for a cell that a refresh has taken away meanwhile. Reads again
        when one goes just while it is read."""
        def read():
            with contextlib.suppress(self._gone()):
                table = accessible.get_table_iface()
                columns = range(table.get_n_columns())
                cells = ([table.get_accessible_at(row, column) for column in columns] for row in range(table.get_n_rows()))
                return ([[cell and cell.get_name() for cell in row] for row in cells],)  # no rows are an answer, too
            return None

        return wait_for("the rows", read)[0]

    def outline(self, program):
        """Everything that the screen reader sees, a line each: for the message of a failed test."""
        lines = []

        def visit(accessible, depth):
            showing = "" if accessible.get_state_set().contains(self.atspi.StateType.SHOWING) else " (hidden)"
            lines.append("  " * depth + f"{accessible.get_role_name()}: {accessible.get_name()!r}{showing}")
            if accessible.get_role_name() not in LISTS:
                for i in range(accessible.get_child_count()):
                    if child := accessible.get_child_at_index(i):
                        visit(child, depth + 1)

        application = self.application(program)
        if application:
            with contextlib.suppress(self._gone()):
                visit(application, 0)
        return "\n".join(lines)
