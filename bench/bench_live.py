"""How fast the mirror serves a page while it takes up a feed that changes each second, compared with nginx, which serves the same bytes
as a file while another mirror takes up the same feed; how long an event of the feed takes to its row; what memory 10,000 events take;
when a mirror with a year of events in its store has sent its first page; and how 10,000 monitors that ask as monitors do get on.

The feed has 2,000 events of a week, of which 1,000 are on the page. For the time to the row the mirror has 20,000 in its store, of
which 10,000 are on the page.

usage: bench_live.py BUILD-FOLDER [--once]
"""

import asyncio
import contextlib
import os
import pathlib
import re
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import threading
import time
import urllib.error

from bench_mirror import HOST, NGINX, NO_PROXY_THERE, OFFLINE, PATH, free_port, get, requests_a_second, wait_for

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "system"))
from feed_server import FeedServer, event  # noqa: E402

EVENTS = 2000
EVENTS_IN_THE_STORE = 20_000
EVENTS_OF_AN_HOUR = 200
EVENTS_IN_MEMORY = 10_000
PAGES_OF_THE_INDEX = 18
EVENTS_OF_A_YEAR = 250_000
MONITORS = 10_000
PERIOD = 490  # seconds from one refresh of a monitor to the next
ADDRESSES = 20  # from which they ask

CONFIGURATION = """
store = "{folder}/service.sqlite"
listen = "127.0.0.1:{port}"
[[source]]
name = "Bench"
credit = "Bench"
[[source.feed]]
url = "{feed}"
period = "{period}"
span = "{span}"
"""


def feed_events(count=EVENTS, minutes=4):
    """Events a minute or so apart, every other one in the area of Los Angeles, the newest first."""
    events = []
    for number in range(count):
        made = event(number, 1 + number % 40 / 10, f"{number % 60} km SSW of Ridgecrest, CA", 10 + number * minutes)
        made["geometry"]["coordinates"] = [-118 + number % 100 / 400 + 20 * (number % 2), 34 + number % 70 / 400, 11.6]
        events.append(made)
    return events


class ChangingFeed(FeedServer):
    """Revises ten events each second."""

    def __enter__(self):
        super().__enter__()
        self._ends = threading.Event()
        self._revises = threading.Thread(target=self._revise, daemon=True)
        self._revises.start()
        return self

    def __exit__(self, *arguments):
        self._ends.set()
        self._revises.join()
        super().__exit__(*arguments)

    def _revise(self):
        turn = 0
        while not self._ends.wait(1):
            turn += 1
            for number in range(10):
                properties = self.events[(turn * 10 + number) % len(self.events)]["properties"]
                properties["mag"] = 1 + (turn + number) % 40 / 10
                properties["updated"] = int(time.time() * 1000)


@contextlib.contextmanager
def program(*command):
    process = subprocess.Popen([str(word) for word in command], stdout=subprocess.DEVNULL)
    try:
        yield process
    finally:
        process.terminate()
        process.wait()


@contextlib.contextmanager
def live_mirror(build, folder, feed, period="1s", span="7d"):
    """A mirror with the events of the feed; gives its process and port."""
    folder.mkdir()
    port = free_port()
    configuration = folder / "mirror.toml"
    configuration.write_text(CONFIGURATION.format(folder=folder, port=port, feed=feed.address, period=period, span=span))
    rows = len(feed.events) // 2
    with program(build / "bin/borvane-mirror", "--config", configuration) as mirror:
        wait_for(port)
        for _ in range(600):
            if get(port).count(b"/recenteqs/Quakes/") == rows:
                break
            time.sleep(0.1)
        else:
            raise SystemExit("the mirror's page does not contain the events of the feed")
        yield mirror, port


def compare_with_nginx(build, folder, seconds, rounds):
    """Requests a second of each, alternately."""
    with ChangingFeed(feed_events()) as feed, live_mirror(build, folder / "live", feed) as (_, mirror_port):
        page = get(mirror_port)
        file = folder / "files" / PATH.lstrip("/")
        file.parent.mkdir(parents=True)
        file.write_bytes(page)
        nginx_port = free_port()
        configuration = folder / "nginx.conf"
        configuration.write_text(NGINX.format(folder=folder, port=nginx_port))
        with program("/usr/sbin/nginx", "-e", folder / "error.log", "-c", configuration):
            wait_for(nginx_port)
            # The mirror takes up the feed while nginx serves, too: it is the same work beside either.
            rates = {"mirror": [], "nginx": []}
            for _ in range(rounds):
                rates["mirror"].append(requests_a_second(mirror_port, seconds))
                rates["nginx"].append(requests_a_second(nginx_port, seconds))
    medians = {server: statistics.median(values) for server, values in rates.items()}
    for server, median in medians.items():
        print(f"{server:8} {median:9.0f} pages/s  {median * len(page) / 1e6:8.0f} MB/s")
    print(f"the mirror is {medians['mirror'] / medians['nginx']:.2f} times as fast; page of {len(page)} bytes")


def time_to_the_row(build, folder, rounds):
    """From the end of the feed's answer to the row on a page that is asked for all the time."""
    times = []
    events = feed_events(EVENTS_IN_THE_STORE, 0.4)
    with FeedServer(events) as feed, live_mirror(build, folder / "row", feed, span="recent") as (_, port):
        for number in range(len(events), len(events) + rounds):
            # The mirror keeps the others: from then on the feed is as short as one of the last hours, each time by one event longer.
            feed.events = [event(number, 3.3, "9 km N of Newtown, CA", 0), *events[:EVENTS_OF_AN_HOUR + number % len(events)]]
            while f"tt{number}.html".encode() not in get(port):
                pass
            seen = time.monotonic()
            while not (ends := [end for count, end in feed.answers if count == len(feed.events)]):
                time.sleep(0.01)  # the mirror may be faster than the thread that notes the end of the answer
            times.append(seen - ends[0])
    print(f"a new event is on its page after {statistics.median(times) * 1000:.0f} ms (at most {max(times) * 1000:.0f})")


def private_bytes(process):
    """The memory that the process shares with no other, and its files in memory."""
    lines = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text().splitlines()
    files = pathlib.Path(f"/proc/{process.pid}/fd").iterdir()
    return (sum(1024 * int(line.split()[1]) for line in lines if line.startswith("Private_"))
            + sum(file.stat().st_size for file in files if str(file.readlink()).startswith("/memfd:")))


def memory_with(build, folder, events):
    """The private memory of a mirror that has served every page of its index twice with these events."""
    with FeedServer(events) as feed, live_mirror(build, folder, feed, "1min") as (mirror, port):
        index = get(port, "/", f"localhost:{port}").decode("windows-1252")
        links = re.findall(rf'<li><a href="(?:http://([a-z]+\.localhost:{port}))?(/[^"]+)"', index)
        if len(links) < PAGES_OF_THE_INDEX:
            raise SystemExit(f"the index has only {len(links)} links")
        for host, path in 2 * links:
            get(port, path, host or f"localhost:{port}")
        time.sleep(1)
        return private_bytes(mirror)


def compare_memory(build, folder):
    empty = memory_with(build, folder / "empty", [])
    full = memory_with(build, folder / "full", feed_events(EVENTS_IN_MEMORY, 0.9))
    print(f"{EVENTS_IN_MEMORY} events: {full / 2**20:.1f} MB of private memory, {(full - empty) / 2**20:.1f} MB more than without events")


def fill_store(file, count):
    """Adds the events of the last year to the store that a mirror has created."""
    now = int(time.time() * 1000)
    step = 365 * 86_400_000 // count
    rows = [(b"Bench", f"yy{number}".encode(), b"", now - number * step, now, now, 0, 34 + number % 70 / 400, -118 + number % 100 / 400,
             11.6, 1 + number % 40 / 10, f"{number % 60} km SSW of Ridgecrest, CA".encode(), b"yy", b"earthquake", 1)
            for number in range(count)]
    with contextlib.closing(sqlite3.connect(file)) as store, store:
        store.executemany(f"insert into event (source, id, other_ids, origin_time, updated, seen, gone, latitude, longitude, depth, "
                          f"magnitude, place, network, kind, changed) values ({', '.join('?' * len(rows[0]))})", rows)
        store.execute("update state set number = 1, time_of_data = ?", (now,))


def time_to_the_first_page(build, folder, count, rounds):
    """From the start of the mirror to the end of its first page, which has the last week of its store."""
    with FeedServer([]) as feed, live_mirror(build, folder, feed):
        pass
    fill_store(folder / "service-events.sqlite", count)
    port = int(re.search(r":(\d+)\"\n\[\[source", (folder / "mirror.toml").read_text())[1])
    times = []
    for _ in range(rounds):
        begin = time.monotonic()
        with program(build / "bin/borvane-mirror", "--config", folder / "mirror.toml"):
            while True:
                try:
                    page = get(port)
                    break
                except urllib.error.URLError:
                    time.sleep(0.001)
            times.append(time.monotonic() - begin)
        if page.count(b"/Quakes/yy") < count * 7 // 366:
            raise SystemExit(f"the first page has {page.count(b'/Quakes/yy')} events of the store")
    print(f"with {count} events in the store the first page is sent {statistics.median(times) * 1000:.0f} ms after the start "
          f"(at most {max(times) * 1000:.0f})")


async def monitor(port, number, seconds, results):
    """One monitor: a request at a moment of its own, then another each period."""
    address = f"127.0.0.{2 + number % ADDRESSES}"
    await asyncio.sleep(seconds * number / MONITORS)
    begin = time.monotonic()
    try:
        reader, writer = await asyncio.open_connection("127.0.0.1", port, local_addr=(address, 0))
        writer.write(f"GET {PATH} HTTP/1.1\r\nHost: {HOST}\r\nConnection: close\r\n\r\n".encode())
        answer = await reader.read()
        writer.close()
        results.append(time.monotonic() - begin if answer.startswith(b"HTTP/1.1 200") else None)
    except OSError:
        results.append(None)


async def ask_as_monitors(port, count, seconds):
    results = []
    await asyncio.gather(*(monitor(port, number, seconds, results) for number in range(0, MONITORS, MONITORS // count)))
    return results


def processor_seconds(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def serve_monitors(build, folder, count, seconds):
    """`count` of the monitors within the part of the period that they have."""
    with FeedServer(feed_events()) as feed, live_mirror(build, folder / "monitors", feed, "1min") as (mirror, port):
        before = processor_seconds(mirror)
        results = asyncio.run(ask_as_monitors(port, count, seconds))
        share = (processor_seconds(mirror) - before) / seconds
    failures = sum(result is None for result in results)
    times = sorted(result for result in results if result is not None)
    print(f"{count} monitors in {seconds:.0f} s: {failures} failures, {100 * share:.1f} % of a core, "
          f"median {statistics.median(times) * 1000:.1f} ms, slowest {times[-1] * 1000:.1f} ms")
    if failures:
        raise SystemExit("a monitor was not answered")


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    once = "--once" in sys.argv
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        folder.chmod(0o755)  # nginx started by root runs its workers as another user
        compare_with_nginx(build, folder, *((1, 1) if once else (3, 5)))
        time_to_the_row(build, folder, 1 if once else 10)
        compare_memory(build, folder)
        time_to_the_first_page(build, folder / "year", EVENTS_OF_A_YEAR, 1 if once else 10)
        # A tenth of the monitors in a tenth of the period asks as often as all in the whole.
        serve_monitors(build, folder, MONITORS // 100 if once else MONITORS, PERIOD / 100 if once else PERIOD)


if __name__ == "__main__":
    os.environ.pop("http_proxy", None)
    os.environ["BORVANE_MIRROR_CONFIG"] = str(OFFLINE)
    os.environ["https_proxy"] = NO_PROXY_THERE
    main()
