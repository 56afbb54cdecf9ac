"""A page server that writes down what arrives, byte for byte, and holds an answer back when told to. It takes request lines as the
monitor sends them, with raw blanks, which the library's own HTTP server refuses."""
import socket
import threading


class PageServer:
    """Answers every GET with `page`. Use as a context; `address` is its host and port."""

    def __init__(self, page=b""):
        self.page = page
        self.heads = []  # the heads of all requests, as they came
        self.open = threading.Event()  # no page goes out while this is clear
        self.open.set()
        self._socket = socket.create_server(("127.0.0.1", 0))
        self.address = "127.0.0.1:%d" % self._socket.getsockname()[1]

    def __enter__(self):
        threading.Thread(target=self._accept, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.open.set()
        self._socket.close()

    def hold(self):
        self.open.clear()

    def release(self):
        self.open.set()

    def targets(self):
        """What stood between "GET " and " HTTP/1.1" in each request."""
        lines = [head.split(b"\r\n", 1)[0] for head in self.heads]
        return [line.removeprefix(b"GET ").rpartition(b" HTTP/")[0] for line in lines]

    def pages_asked_for(self):
        """The targets of list pages, without the calls of the maker's service."""
        return [target for target in self.targets() if target.startswith(b"/recenteqs")]

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
            self.heads.append(head)
            is_page = head.startswith(b"GET /recenteqs")
            if is_page:
                self.open.wait()
            body = self.page if is_page else b"0"
            try:
                connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: %d\r\nConnection: close\r\n\r\n%s"
                                   % (len(body), body))
            except OSError:
                pass  # the monitor gave up waiting
