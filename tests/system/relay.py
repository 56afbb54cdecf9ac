"""A relay in front of a server: forwards bytes both ways and records every request, byte for byte."""
import socket
import threading


class Relay:
    """Use as a context; `address` is its host and port. `requests` holds the heads of all requests, as they came."""

    def __init__(self, port):
        self.requests = []
        self._port = port
        self._socket = socket.create_server(("127.0.0.1", 0))
        self.address = "127.0.0.1:%d" % self._socket.getsockname()[1]

    def __enter__(self):
        threading.Thread(target=self._accept, daemon=True).start()
        return self

    def __exit__(self, *_):
        self._socket.close()

    def _accept(self):
        while True:
            try:
                client, _ = self._socket.accept()
            except OSError:
                return
            try:
                server = socket.create_connection(("127.0.0.1", self._port))
            except OSError:
                client.close()  # the server is gone
                continue
            threading.Thread(target=self._forward, args=(client, server, self._note_requests()), daemon=True).start()
            threading.Thread(target=self._forward, args=(server, client, lambda piece: None), daemon=True).start()

    def _note_requests(self):
        received = b""

        def note(piece):
            nonlocal received
            received += piece
            while (end := received.find(b"\r\n\r\n")) >= 0:
                self.requests.append(received[:end + 4])
                received = received[end + 4:]
        return note

    @staticmethod
    def _forward(source, target, note):
        try:
            while piece := source.recv(65536):
                note(piece)
                target.sendall(piece)
        except OSError:
            pass  # either side is gone
        for end in (source, target):
            try:
                end.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass
