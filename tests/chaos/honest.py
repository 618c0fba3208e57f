"""Clients with valid requests, which measure the time of their answers."""
import http.client
import socket
import ssl
import time

import messages

HOST = b"chaos.example.org"  # name of the host that the object manager serves
XML = messages.xml_enumeration(b"QAV_System")
BINARY = messages.binary_enumeration(b"QAV_System")
OPEN_METRICS = {"Accept": "application/openmetrics-text"}


def exchange(connection, request):
    """Returns the reply to a request. The reply must have a Content-Length."""
    connection.sendall(request)
    reply = b""
    while True:
        head, end, body = reply.partition(b"\r\n\r\n")
        if end:
            length = int(head.partition(b"\r\nContent-Length: ")[2].partition(b"\r\n")[0])
            if len(body) >= length:
                return reply
        piece = connection.recv(65536)
        if not piece:
            raise ConnectionError("the connection ended before a whole reply: %r" % reply[:200])
        reply += piece


class ManagerClient:
    """Sends requests to the object manager over all sockets, in both protocols. Over TLS it verifies the object manager."""

    visits = tuple((way, request) for way in ("local", "plain", "TLS") for request in (XML, BINARY))
    pause = 0.01

    def __init__(self, manager):
        self.manager = manager
        self.context = ssl.create_default_context(cafile=manager.tls_authority)

    def connect(self, way, _):
        if way == "plain":
            return socket.create_connection(("127.0.0.1", self.manager.port), 60)
        if way == "TLS":
            connection = socket.create_connection(("127.0.0.1", self.manager.tls_port), 60)
            # Else the kernel holds the request back, 40 ms, until the object manager has acknowledged the handshake.
            connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            return self.context.wrap_socket(connection, server_hostname="localhost")
        connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        connection.settimeout(60)
        connection.connect(self.manager.socket)
        return connection

    @staticmethod
    def check(connection, _, request):
        reply = exchange(connection, request)
        if not reply.startswith(b"HTTP/1.1 200 ") or HOST not in reply:
            raise ValueError("not the answer: %r" % reply[:200])


class Scraper:
    """Scrapes the exporter, as Prometheus does, and asks whether it runs."""

    visits = (("/metrics", b"\n# EOF\n"), ("/healthz", b"ok\n"))
    pause = 0.1

    def __init__(self, exporter):
        self.exporter = exporter

    def connect(self, *_):
        connection = http.client.HTTPConnection("127.0.0.1", self.exporter.port, timeout=60)
        connection.connect()
        return connection

    @staticmethod
    def check(connection, path, end):
        connection.request("GET", path, headers=OPEN_METRICS)
        reply = connection.getresponse()
        text = reply.read()
        if reply.status != 200 or not text.endswith(end):
            raise ValueError("not the answer: status %d, %r" % (reply.status, text[-200:]))
        if path == "/metrics" and b"\nowb_scrape_success 1\n" not in text:
            unread = [line for line in text.split(b"\n")
                      if line.startswith(b"owb_group_read_success{") and line.endswith(b" 0")]
            raise ValueError("a scrape without all groups: %r" % unread)


def timed(client, kept, visit):
    """Seconds until the answer, including the time to connect if the connection is new."""
    begin = time.monotonic()
    connection = kept or client.connect(*visit)
    client.check(connection, *visit)
    seconds = time.monotonic() - begin
    if not kept:
        connection.close()
    return seconds


def run(pipe, client, end):
    """Sends requests until the end time, over kept and new connections. Writes the response times in seconds, sorted, to the pipe: of
    the answers without TLS, and of those with it. Or the error message."""
    try:
        kept = {visit: client.connect(*visit) for visit in client.visits}
        plain, encrypted = [], []
        while time.monotonic() < end:
            for visit in client.visits:
                times = encrypted if "TLS" in visit else plain
                times.append(timed(client, kept[visit], visit))
                times.append(timed(client, None, visit))
            time.sleep(client.pause)
        pipe.send((sorted(plain), sorted(encrypted)))
    except Exception as error: # pylint: disable=broad-except # the summary reports any error
        pipe.send("%s: %s" % (type(error).__name__, error))
