"""How fast the maker's service returns felt reports, and how long an answer takes while reports come in; on an SQLite file and on a
PostgreSQL server, each with its usual settings. Compared with nginx, which serves the same bytes as a file.

A map of 1,000 reports, 16 connections that stay open; 100 reports a second to other maps, from 200 addresses.

usage: bench_service.py BUILD-FOLDER [--once]
"""

import asyncio
import contextlib
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile
import threading
import time

from bench_mirror import NGINX, NO_PROXY_THERE, OFFLINE, free_port, wait_for

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "system"))
from postgresql import Postgresql  # noqa: E402

CONNECTIONS = 16
RECORDS = 1000
REPORTS_A_SECOND = 100
ADDRESSES = 250  # the service accepts 30 reports a minute from each
SCRIPT = "/cgi-bin/borvane/control.pl"
RECORD = "235|10/23/2024 04:15:09 AM|35|3.428571|1|0|95045"


async def ask(port, query, address="127.0.0.1"):
    """The body of the service's answer; the client has the given address."""
    reader, writer = await asyncio.open_connection("127.0.0.1", port, local_addr=(address, 0))
    writer.write(f"GET {SCRIPT}?{query} HTTP/1.1\r\nHost: maker.localhost\r\nConnection: close\r\n\r\n".encode())
    answer = await reader.read()
    writer.close()
    return answer.partition(b"\r\n\r\n")[2]


class Reporters:
    """Sends 100 reports a second while it is entered; `times` are those from a report to its answer, in seconds."""

    def __init__(self, port):
        self.port = port
        self.times = []
        self.lost = []
        self._thread = threading.Thread(target=lambda: asyncio.run(self._run()))
        self._stop = threading.Event()

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._stop.set()
        self._thread.join()
        if self.lost:
            raise SystemExit(f"{len(self.lost)} of {len(self.times)} reports were not answered by ok, the first by {self.lost[0]}")

    async def _run(self):
        tasks = []
        begin = time.perf_counter()
        while not self._stop.is_set():
            tasks.append(asyncio.create_task(self._report(len(tasks))))
            await asyncio.sleep(max(0, begin + len(tasks) / REPORTS_A_SECOND - time.perf_counter()))
        await asyncio.gather(*tasks)

    async def _report(self, number):
        begin = time.perf_counter()
        answer = await ask(self.port, f"cmd=puta&map=Map {number % 25}&strout={RECORD}", f"127.0.2.{1 + number % ADDRESSES}")
        self.times.append(time.perf_counter() - begin)
        if answer != b"ok":
            self.lost.append(answer)


def load(port, path, host, seconds):
    """Answers a second and the 99th percentile of the time to an answer in ms, from 16 connections."""
    report = subprocess.run(["wrk", "--latency", "-t1", f"-c{CONNECTIONS}", f"-d{seconds}s", "-H", f"Host: {host}",
                             f"http://127.0.0.1:{port}{path}"], check=True, capture_output=True, text=True).stdout
    if "Socket errors" in report or "Non-2xx" in report:
        raise SystemExit(report)
    number, unit = re.search(r"99%\s+([\d.]+)(us|ms|s)\b", report).groups()
    return float(re.search(r"Requests/sec:\s+([\d.]+)", report).group(1)), float(number) * {"us": 0.001, "ms": 1, "s": 1000}[unit]


def percentile(times):
    return 1000 * statistics.quantiles(times, n=100)[98]


@contextlib.contextmanager
def program(*command):
    process = subprocess.Popen([str(word) for word in command], stdout=subprocess.DEVNULL)
    try:
        yield
    finally:
        process.terminate()
        process.wait()


async def fill(port):
    for number in range(RECORDS):
        if await ask(port, f"cmd=puta&map=A&strout={RECORD}", f"127.0.3.{1 + number % ADDRESSES}") != b"ok":
            raise SystemExit("the service does not take reports")
    answer = await ask(port, "cmd=geta&map=A")
    if answer != (RECORD + "\n").encode() * RECORDS:
        raise SystemExit("the service does not give the reports")
    return answer


def measure_service(build, store, seconds):
    """Prints the figures of the service on that store; returns the answer that it sends."""
    port = free_port()
    with program(build / "bin/borvane-mirror", "--listen", f"127.0.0.1:{port}", "--store", store):
        wait_for(port)
        answer = asyncio.run(fill(port))
        path = f"{SCRIPT}?cmd=geta&map=A"
        rate, late = load(port, path, "maker.localhost", seconds)
        print(f"    geta alone           {rate:7.0f} answers/s, 99 of 100 within {late:6.1f} ms")
        with Reporters(port) as reporters:
            rate, late = load(port, path, "maker.localhost", seconds)
        print(f"    geta with reports    {rate:7.0f} answers/s, 99 of 100 within {late:6.1f} ms")
        print(f"    the reports          {len(reporters.times) / seconds:7.0f} answers/s, 99 of 100 within {percentile(reporters.times):6.1f} ms")
        with Reporters(port) as reporters:
            time.sleep(seconds)
        print(f"    reports alone        {len(reporters.times) / seconds:7.0f} answers/s, 99 of 100 within {percentile(reporters.times):6.1f} ms")
    return answer


def measure_file(folder, answer, seconds):
    port = free_port()
    (folder / "files").mkdir()
    (folder / "files" / "reports").write_bytes(answer)
    (folder / "nginx.conf").write_text(NGINX.format(folder=folder, port=port))
    with program("/usr/sbin/nginx", "-e", folder / "error.log", "-c", folder / "nginx.conf"):
        wait_for(port)
        rate, late = load(port, "/reports", "localhost", seconds)
    print(f"    the same bytes       {rate:7.0f} answers/s, 99 of 100 within {late:6.1f} ms")


def main():
    build = pathlib.Path(sys.argv[1])
    seconds = 1 if "--once" in sys.argv else 10
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        # nginx started by root runs its workers as another user.
        folder.chmod(0o755)
        print("SQLite")
        answer = measure_service(build, folder / "service.sqlite", seconds)
        print("PostgreSQL")
        with Postgresql() as server:
            measure_service(build, server.address, seconds)
        print("nginx, a file")
        measure_file(folder, answer, seconds)


if __name__ == "__main__":
    os.environ.pop("http_proxy", None)
    os.environ["BORVANE_MIRROR_CONFIG"] = str(OFFLINE)
    os.environ["https_proxy"] = NO_PROXY_THERE
    main()
