"""Clients with valid requests, which measure the time of their answers."""
import socket
import time

import messages

XML = messages.xml_enumeration(b"QAV_System")
BINARY = messages.binary_enumeration(b"QAV_System")


def connect(manager, is_local):
    if not is_local:
        return socket.create_connection(("127.0.0.1", manager.port), 60)
    connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    connection.settimeout(60)
    connection.connect(manager.socket)
    return connection


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


def timed(manager, kept, is_local, request):
    """Seconds until the answer, including the time to connect if the connection is new."""
    begin = time.monotonic()
    connection = kept or connect(manager, is_local)
    reply = exchange(connection, request)
    seconds = time.monotonic() - begin
    if not kept:
        connection.close()
    if not reply.startswith(b"HTTP/1.1 200 ") or manager.host not in reply:
        raise ValueError("not the answer: %r" % reply[:200])
    return seconds


def run(pipe, manager, end):
    """Sends requests until the end time, over both sockets, both protocols, kept and new connections. Writes the
    response times in seconds, sorted, or the error message to the pipe."""
    try:
        kept = {is_local: connect(manager, is_local) for is_local in (True, False)}
        times = []
        while time.monotonic() < end:
            for is_local in (True, False):
                for request in (XML, BINARY):
                    times.append(timed(manager, kept[is_local], is_local, request))
                    times.append(timed(manager, None, is_local, request))
            time.sleep(0.01)
        pipe.send(sorted(times))
    except Exception as error: # pylint: disable=broad-except # the summary reports any error
        pipe.send("%s: %s" % (type(error).__name__, error))
