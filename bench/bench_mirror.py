"""How fast the mirror serves a page of 1,000 events, compared with nginx, which serves the same bytes as a file.

Both have one worker and keep their connections alive; they run alternately, and the medians are compared.

usage: bench_mirror.py BUILD-FOLDER [--once]
"""

import json
import os
import pathlib
import re
import signal
import socket
import statistics
import subprocess
import sys
import tempfile
import time
import urllib.request

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "system"))
from reserved_port import ReservedPort  # noqa: E402

OFFLINE = pathlib.Path(__file__).resolve().parent.parent / "tests" / "offline.toml"  # no feed on the Internet is asked
NO_PROXY_THERE = "http://127.0.0.1:9"  # should a mirror not take notice of it, no request leaves the computer either
EVENTS = 1000
CONNECTIONS = 8
PATH = "/recenteqs/Maps/Los_Angeles.html"
HOST = "southern.localhost"

NGINX = """
daemon off;
worker_processes 1;
pid {folder}/nginx.pid;
error_log {folder}/error.log;
events {{ worker_connections 256; }}
http {{
  access_log off;
  sendfile on;
  tcp_nopush on;
  keepalive_requests 1000000000;
  default_type text/html;
  client_body_temp_path {folder}/temp; proxy_temp_path {folder}/temp; fastcgi_temp_path {folder}/temp;
  uwsgi_temp_path {folder}/temp; scgi_temp_path {folder}/temp;
  server {{ listen 127.0.0.1:{port}; root {folder}/files; }}
}}
"""


def write_catalogue(path):
    """A thousand events around Los Angeles, a minute apart."""
    features = []
    for number in range(EVENTS):
        features.append({
            "type": "Feature", "id": f"ci{14155392 + number}",
            "properties": {"mag": 1 + number % 40 / 10, "place": f"{number % 60} km SSW of Ridgecrest, CA",
                           "time": 1518000000000 - 60000 * number, "net": "ci", "type": "earthquake"},
            "geometry": {"type": "Point", "coordinates": [-118 + number % 100 / 400, 34 + number % 70 / 400, 11.6]}})
    path.write_text(json.dumps({"type": "FeatureCollection", "features": features}))


reserved = []


def free_port():
    """A port that is this process's alone until it ends."""
    reserved.append(ReservedPort())
    return reserved[-1].number


def wait_for(port):
    for _ in range(200):
        try:
            socket.create_connection(("127.0.0.1", port), timeout=1).close()
            return
        except OSError:
            time.sleep(0.05)
    raise SystemExit(f"nothing listens on port {port}")


def get(port, path=PATH, host=HOST):
    request = urllib.request.Request(f"http://127.0.0.1:{port}{path}", headers={"Host": host})
    with urllib.request.urlopen(request, timeout=10) as answer:
        return answer.read()


def requests_a_second(port, seconds):
    report = subprocess.run(
        ["wrk", "-t1", f"-c{CONNECTIONS}", f"-d{seconds}s", "-H", f"Host: {HOST}", f"http://127.0.0.1:{port}{PATH}"],
        check=True, capture_output=True, text=True).stdout
    if "Socket errors" in report or "Non-2xx" in report:
        raise SystemExit(report)
    return float(re.search(r"Requests/sec:\s+([\d.]+)", report).group(1))


def main():
    build = pathlib.Path(sys.argv[1])
    rounds, seconds = (1, 1) if "--once" in sys.argv else (5, 3)
    servers = []
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        # nginx started by root runs its workers as another user.
        folder.chmod(0o755)
        try:
            write_catalogue(folder / "events.json")
            ports = {"mirror": free_port(), "nginx": free_port()}
            servers.append(subprocess.Popen(
                [build / "bin/borvane-mirror", "--catalogue", folder / "events.json",
                 "--listen", f"127.0.0.1:{ports['mirror']}"], stdout=subprocess.DEVNULL))
            wait_for(ports["mirror"])
            page = get(ports["mirror"])
            if page.count(b"/recenteqs/Quakes/") != EVENTS:
                raise SystemExit("the mirror's page does not contain the events")

            file = folder / "files" / PATH.lstrip("/")
            file.parent.mkdir(parents=True)
            file.write_bytes(page)
            configuration = folder / "nginx.conf"
            configuration.write_text(NGINX.format(folder=folder, port=ports["nginx"]))
            servers.append(subprocess.Popen(["/usr/sbin/nginx", "-e", folder / "error.log", "-c", configuration]))
            wait_for(ports["nginx"])
            if get(ports["nginx"]) != page:
                raise SystemExit("nginx serves other bytes")

            rates = {"mirror": [], "nginx": []}
            for _ in range(rounds):
                for server, port in ports.items():
                    rates[server].append(requests_a_second(port, seconds))
            medians = {server: statistics.median(values) for server, values in rates.items()}
            for server, median in medians.items():
                print(f"{server:8} {median:9.0f} pages/s  {median * len(page) / 1e6:8.0f} MB/s")
            print(f"the mirror is {medians['mirror'] / medians['nginx']:.2f} times as fast; page of {len(page)} bytes")
        finally:
            for server in servers:
                server.send_signal(signal.SIGTERM)
            for server in servers:
                server.wait()


if __name__ == "__main__":
    os.environ.pop("http_proxy", None)
    os.environ["BORVANE_MIRROR_CONFIG"] = str(OFFLINE)
    os.environ["https_proxy"] = NO_PROXY_THERE
    main()
