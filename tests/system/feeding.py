"""What the tests of live events share: the configuration of a mirror that asks a feed on this computer, and its pages."""
import urllib.error
import urllib.request

PATH = "/recenteqs/Maps/Los_Angeles.html"


def write_configuration(file, feed, store, *lines):
    """Writes the file of a mirror that asks the feed each second, with further lines in front of its source, and returns its name."""
    file.write_text("\n".join([f'store = "{store}"', *lines, '[[source]]', 'name = "Test"', 'credit = "Network of the tests"',
                               '[[source.feed]]', f'url = "{feed.address}"', 'period = "1s"', 'span = "7d"', ""]), encoding="utf-8")
    return file


def read_page(port, path=PATH, host="southern.localhost"):
    """What a mirror answers, whatever the status."""
    request = urllib.request.Request(f"http://127.0.0.1:{port}{path}", headers={"Host": host})
    try:
        with urllib.request.urlopen(request, timeout=60) as answer:
            return answer.read().decode("windows-1252")
    except urllib.error.HTTPError as refusal:
        return refusal.read().decode()
