"""A port for a server that ends and comes back."""
import socket


class ReservedPort:
    """A free port of the loopback address, `number`, that the system gives to no other program while this context lasts. Nothing
    listens there until a server does, which must allow its address to be shared (SO_REUSEADDR), as servers do."""

    def __init__(self):
        self._socket = socket.socket()
        self._socket.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        self._socket.bind(("127.0.0.1", 0))
        self.number = self._socket.getsockname()[1]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._socket.close()
