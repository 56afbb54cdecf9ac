"""A page server that records what arrives, byte for byte, and holds answers back on request. It accepts request lines as the
monitor sends them, with raw blanks, which the library's own HTTP server refuses."""
import select
import socket
import threading
import time

# An area, the target of its page, and a page with one event.
AREA = "Los Angeles"
TARGET = b"/recenteqs/Maps/Los_Angeles.html"
PAGE = b"""<PRE>
<A HREF="/recenteqs/Maps/117-34.html">map</A> 3.1  <A HREF="/recenteqs/Quakes/tt1.html">2024/02/29 23:59:59 34.000N 117.000W 5.0</A>    1 km ( 1 mi) N of Sometown, CA
</PRE>
"""


class PageServer:
    """Answers every GET with `page`. Use as a context; `address` is its host and port."""

    def __init__(self, page=b"", port=0):
        self.page = page
        self.heads = []  # the heads of all requests, as they came
        self.arrivals = []  # and when, by the monotonic clock
        self.further_headers = b""  # lines of every answer
        self.hangs_up = False  # ends each connection instead of an answer
        self.abandoned = []  # the numbers of the page requests, from 0, that the monitor has abandoned before their answer
        self.may_answer = True
        self._gates = []  # one for each page request; it answers when its gate is open
        self._socket = socket.create_server(("127.0.0.1", port))
        self.port = self._socket.getsockname()[1]
        self.address = f"127.0.0.1:{self.port}"

    def __enter__(self):
        threading.Thread(target=self._accept, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.release()
        self._socket.close()

    def hold(self):
        """Leaves page requests from now on without an answer."""
        self.may_answer = False

    def release(self, first=0):
        """Answers the page requests that wait, those from number `first` on, and all that are still to come."""
        self.may_answer = True
        for gate in self._gates[first:]:
            gate.set()

    def targets(self):
        """The part between "GET " and " HTTP/1.1" of each request."""
        lines = [head.split(b"\r\n", 1)[0] for head in self.heads]
        return [line.removeprefix(b"GET ").rpartition(b" HTTP/")[0] for line in lines]

    def pages_requested(self):
        """The targets of list pages, without the calls of the maker's service."""
        return [target for target in self.targets() if target.startswith(b"/recenteqs")]

    def times_of(self, part):
        """When requests arrived whose target has that part."""
        return [time for time, target in zip(self.arrivals, self.targets()) if part in target]

    def _accept(self):
        while True:
            try:
                connection, _ = self._socket.accept()
            except OSError:
                return
            threading.Thread(target=self._serve, args=(connection,), daemon=True).start()

    def _serve(self, connection):
        with connection:
            head = b""
            while b"\r\n\r\n" not in head:
                piece = connection.recv(65536)
                if not piece:
                    return
                head += piece
            self.arrivals.append(time.monotonic())
            self.heads.append(head)
            if self.hangs_up:
                return
            is_page = head.startswith(b"GET /recenteqs")
            if is_page and not self._wait_for_the_gate(connection):
                return
            body = self.page if is_page else b"0"
            try:
                connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: %d\r\nConnection: close\r\n%s\r\n%s"
                                   % (len(body), self.further_headers, body))
            except OSError:
                pass  # the monitor has abandoned the request

    def _wait_for_the_gate(self, connection):
        """Returns False when the other side has closed the connection first."""
        gate = threading.Event()
        self._gates.append(gate)
        if self.may_answer:
            gate.set()
        while not gate.wait(0.02):
            if select.select([connection], [], [], 0)[0]:
                self.abandoned.append(self._gates.index(gate))
                return False
        return True


class Host(PageServer):
    """A host that can fall silent, as if its line were dead."""

    def __init__(self):
        super().__init__()
        self._listens = threading.Event()
        self._listens.set()
        self._fillers = []

    def __exit__(self, *_):
        super().__exit__()
        self.answer_again()

    def fall_silent(self):
        """Reads no request from now on: connections are established, and what is sent over them is never read."""
        self._listens.clear()

    def swallow_packets(self):
        """Does not answer the first packet of a connection from now on: the queue is full."""
        self.fall_silent()
        self._socket.listen(0)
        while True:
            filler = socket.socket()
            filler.settimeout(0.3)
            self._fillers.append(filler)
            try:
                filler.connect(("127.0.0.1", self.port))
            except TimeoutError:
                return

    def answer_again(self):
        for filler in self._fillers:
            filler.close()
        self._listens.set()

    def callers(self):
        """The remote ports of the connections that a program has or tries to establish."""
        opening, established = "02", "01"
        own = {filler.getsockname()[1] for filler in self._fillers}
        ports = set()
        with open("/proc/net/tcp", encoding="ascii") as table:
            for line in table.readlines()[1:]:
                _, near, far, state, *_ = line.split()
                if state in (opening, established) and int(far.partition(":")[2], 16) == self.port:
                    ports.add(int(near.partition(":")[2], 16))
        return ports - own

    def _accept(self):
        while True:
            self._listens.wait()
            try:
                if select.select([self._socket], [], [], 0.02)[0] and self._listens.is_set():
                    connection, _ = self._socket.accept()
                    threading.Thread(target=self._serve, args=(connection,), daemon=True).start()
            except (OSError, ValueError):  # the socket has been closed
                return
