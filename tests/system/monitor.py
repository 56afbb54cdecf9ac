"""The monitor as its user sees it: what can be pressed, chosen and read, each by its name on the screen."""
from desk import LISTS, wait_for

TITLE = "Borvane - Last Events"
SHORT_BAR, LONG_BAR = "^Borvane$", "^Form2$"  # the titles of the bars' windows, which nobody sees

# The keys that lead to the entries of the menus that open in the records window. A menu is in no tree of the screen reader's.
MENU_KEYS = {"Open in Google Maps": ("Down",), "More Info": ("Down", "Down"), "Submit Report": ("Up", "Up", "Up"),
             "View Reports": ("Up", "Up"), "Grid lines": ("Up",)}
GLOBAL_MENU_KEYS = {"More Info": ("Down",), "Consult Wiki": ("Down", "Down"), "Wiki through Google": ("Up",)}
HOSTS = ("National", "Southern", "Northern", "PacificNorthwest", "Alaska", "Utah", "Memphis", "Northeastern", "PuertoRico", "Maker")


# An alert shakes its popup inside the refresh, for up to some seconds, and the sample's newest events are strong enough: only the tests
# of alerts let it come.
NO_ALERT = "Alert=99\n"

# The settings of a user who has started the program before, up to the hosts: the banner no longer shows.
LATER_START = f"""[General]
{NO_ALERT}MacID=500000
RunTime=11
ad=" 5"
noBother=1
Area=Los Angeles

[Hosts]
"""


def write_settings(settings_file, text):
    """Replaces the stored settings, before the monitor starts."""
    settings_file.parent.mkdir(parents=True, exist_ok=True)
    settings_file.write_text(text)


def write_hosts(settings_file, host_of, general=NO_ALERT):
    """Replaces the default hosts by the test's own. `general` has the lines of other settings, and more can be appended."""
    hosts = "".join(f"{name}={host_of(name)}\n" for name in HOSTS)
    write_settings(settings_file, f"[Hosts]\n{hosts}\n[General]\n{general}")


class Monitor:
    def __init__(self, desk, *command):
        self.desk = desk
        self.program = desk.start(*command)
        self.window = desk.window(self.program, TITLE)

    # What a user does.

    def press_button(self, name):
        """Clicks a button of the records window's toolbar: "Auto Refresh", "Settings", "Quit"."""
        self.desk.activate(self.window)
        self.desk.click(self.desk.find(self.program, name))

    def open_bar(self, title):
        """Puts a bar in the window's place and returns its number. The bars' buttons wait for the end of the first refresh."""
        button = {SHORT_BAR: "Short Bar", LONG_BAR: "Long Bar"}[title]
        wait_for("the button", lambda: self.desk.is_enabled(self.desk.find(self.program, button)))
        self.press_button(button)
        return self.desk.window(self.program, title)

    def press_key(self, key):
        """Presses a key in the records window."""
        self.desk.activate(self.window)
        self.desk.press(key)

    def come_back_from_icon(self):
        self.desk.x("xdotool", "windowminimize", "--sync", self.window)
        self.desk.activate(self.window)

    def choose_area(self, name):
        """Opens the list of areas in the settings window and clicks the area."""
        self.desk.activate(self.desk.window(self.program, "^Settings$"))
        box = self.desk.find(self.program, role="combo box").get_component_iface()
        extents = box.get_extents(self.desk.atspi.CoordType.SCREEN)
        arrow = 8
        self.desk.click_at(extents.x + extents.width - arrow, extents.y + extents.height // 2)
        self.desk.click(self.desk.find(self.program, name, "list item"))

    def row_place(self, row):
        """The middle of a row of the list of events on the screen, from 0 on."""
        cell = self.list("History").get_table_iface().get_accessible_at(row, 0)
        extents = cell.get_component_iface().get_extents(self.desk.atspi.CoordType.SCREEN)
        return extents.x + extents.width // 2, extents.y + extents.height // 2

    def click_row(self, row, button=1):
        self.desk.activate(self.window)
        self.desk.click_at(*self.row_place(row), button)

    def shown_windows(self):
        """The numbers of the program's windows on the screen, also of those without a title, as a menu is."""
        return set(self.desk.x("xdotool", "search", "--onlyvisible", "--pid", str(self.program.pid)).split())

    def open_menu(self, action):
        """Returns the number of the menu that opens when `action` is done."""
        return self.desk.open_menu(self.program, action)

    def press_in_menu(self, menu, *keys):
        """Presses keys, the last of which closes the menu."""
        self.desk.press(*keys)
        wait_for("the menu to close", lambda: menu not in self.shown_windows())

    def choose_for_row(self, row, entry):
        """Chooses an entry of the menu of a row, from 0 on, in the list of events."""
        menu = self.open_menu(lambda: self.click_row(row, button=3))
        self.press_in_menu(menu, *MENU_KEYS[entry], "Return")

    def fill_report(self, name, zip_code, tick=False):
        """Fills the felt report that has the keyboard: who, where, whether pictures moved, and the first entries of the lists. Ends in
        the comments."""
        self.desk.x("xdotool", "type", "--delay", "30", name)
        self.desk.press("Tab", "Tab", "ctrl+a")
        self.desk.x("xdotool", "type", "--delay", "30", zip_code)
        self.desk.press("Tab", "Tab")
        if tick:
            self.desk.press("space")
        self.desk.press(*["Tab"] * 7)
        for _ in range(3):
            self.desk.press("Down", "Tab")

    def close_settings(self):
        self.desk.activate(self.desk.window(self.program, "^Settings$"))
        self.desk.click(self.desk.find(self.program, "Close", "push button"))
        wait_for("the settings window to close", lambda: "Settings" not in self.desk.windows(self.program))

    def watch_area(self, name):
        """From a fresh start to the rows of an area, the way the program guides its user."""
        self.press_button("Auto Refresh")
        self.choose_area(name)
        self.close_settings()
        self.press_button("Auto Refresh")

    # What a user sees.

    def title(self):
        return self.desk.x("xdotool", "getwindowname", self.window).rstrip("\n")

    def list(self, name):
        return self.desk.find(self.program, name, LISTS)

    def rows(self):
        return self.desk.rows(self.list("History"))

    def last_event(self):
        return self.desk.rows(self.list("Last Activity"))

    def has_rows(self):
        """Whether a page with rows has been read to its end: then the title begins with a magnitude."""
        return self.title()[:1].isdigit()

    def wait_for_rows(self):
        """The rows, as soon as the page has been read to its end."""
        wait_for("the magnitude in the title", self.has_rows)
        return self.rows()

    def shows(self, text):
        """Whether a visible label or panel has a text that begins with `text`."""
        return any(name.startswith(text) for name in self.desk.names(self.program))

    def is_down(self, button):
        return self.desk.is_checked(self.desk.find(self.program, button))

    def picture(self):
        """The pixels of the records window's list, as they are on the screen."""
        extents = self.list("History").get_component_iface().get_extents(self.desk.atspi.CoordType.SCREEN)
        part = f"{extents.width}x{extents.height}+{extents.x}+{extents.y}"
        return self.desk.x("import", "-silent", "-window", "root", "-crop", part, "txt:-").split("\n", 1)[1]

    def settings(self):
        """The stored values, by name, as their raw text in the file."""
        lines = self.desk.settings_file.read_text(encoding="utf-8").splitlines()
        return dict(line.split("=", 1) for line in lines if "=" in line)
