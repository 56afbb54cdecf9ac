"""What the tests of alerts share: a page with a strong event that is older than the monitor, and how to raise its alert."""
import time

from monitor import write_hosts
from page_server import AREA, PAGE, PageServer
from system_test import SystemTest

POPUP = "Quake Alert"
MAGNITUDE = "3.1"  # of the event of PAGE


class AlertingTest(SystemTest):
    def start_alerting(self, **settings):
        """A monitor that alerts for the event of its page, at each refresh."""
        self.server = self.enterContext(PageServer(PAGE))
        stored = {"Area": AREA, "Alert": "3", **settings}
        write_hosts(self.desk.settings_file, lambda name: self.server.address,
                    "".join(f"{name}={text}\n" for name, text in stored.items()))
        # A monitor that is loaded at second 00 raises no alert.
        second = time.localtime().tm_sec
        if not 2 <= second <= 50:
            time.sleep((62 - second) % 60)
        return self.start_monitor()

    def raise_alert(self, monitor):
        """Refreshes; the number of the popup's window."""
        before = len(self.server.pages_requested())
        monitor.press_key("r")
        self.wait_until("the request of the page", lambda: len(self.server.pages_requested()) > before)
        return self.desk.window(monitor.program, POPUP)

    def press_quit(self, monitor):
        self.desk.activate(monitor.window)
        self.desk.click(self.desk.find(monitor.program, "Quit"))

    def place(self, window):
        """Where the upper left corner of a window is on the screen."""
        lines = self.desk.x("xdotool", "getwindowgeometry", "--shell", window).splitlines()
        values = dict(line.split("=") for line in lines if "=" in line)
        return int(values["X"]), int(values["Y"])
