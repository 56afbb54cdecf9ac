"""A feed of events as a network publishes it, over plain HTTP on this computer."""
import email.utils
import json
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer


def event(number, magnitude, place, minutes_ago, **properties):
    """A feature of the summary form, within the area of Los Angeles."""
    moment = int((time.time() - 60 * minutes_ago) * 1000)
    return {"type": "Feature", "id": f"tt{number}",
            "properties": {"mag": magnitude, "place": place, "time": moment, "updated": moment, "net": "tt", "code": str(number),
                           "ids": f",tt{number},", "status": "automatic", "type": "earthquake", **properties},
            "geometry": {"type": "Point", "coordinates": [-118.0, 34.0, 10.0]}}


class FeedServer:
    """Answers every GET with the events of now. Use as a context; one that has ended can be followed by another at its port."""

    def __init__(self, events, port=0):
        self.events = events
        self.requests = []  # the heads of all requests, as dictionaries
        self.answers = []  # how many events each answer had, and when it ended by the monotonic clock
        feed = self

        class Handler(BaseHTTPRequestHandler):
            def do_GET(self):  # noqa: N802, the library's name
                feed.requests.append(dict(self.headers))
                events = feed.events
                body = feed.text(events)
                self.send_response(200)
                self.send_header("Content-Type", "application/json")
                self.send_header("Content-Length", str(len(body)))
                self.send_header("Cache-Control", "max-age=1")
                self.send_header("Last-Modified", email.utils.formatdate(usegmt=True))
                self.end_headers()
                self.wfile.write(body)
                feed.answers.append((len(events), time.monotonic()))

            def log_message(self, *_):
                pass

        self._server = ThreadingHTTPServer(("127.0.0.1", port), Handler)
        self.port = self._server.server_port
        self.address = f"http://127.0.0.1:{self.port}/all_week.geojson"

    @staticmethod
    def text(events):
        """The feed as it is made now."""
        metadata = {"generated": int(time.time() * 1000), "url": "", "title": "All", "status": 200, "api": "1.10.3", "count": len(events)}
        return json.dumps({"type": "FeatureCollection", "metadata": metadata, "features": events}).encode()

    def __enter__(self):
        threading.Thread(target=self._server.serve_forever, daemon=True).start()
        return self

    def __exit__(self, *_):
        self._server.shutdown()
        self._server.server_close()
