"""Clients that send invalid requests, in pieces, slowly, or many at a time."""
import asyncio
import base64
import os
import random
import socket
import ssl
import struct
import time

import messages

LARGE_ENUMERATION = messages.xml_enumeration(b"QAV_K70Chassis")
LARGE_SCRAPE = messages.scrape()
RECORDED = messages.recorded()
SCRAPES = messages.scrapes()


# Hostile clients need not know whom they attack.
CONTEXT = ssl.create_default_context()
CONTEXT.check_hostname = False
CONTEXT.verify_mode = ssl.CERT_NONE


class Client:
    """One connection. It ignores the replies, and reads them only so that the peer continues."""

    def __init__(self, dice, server, reader, writer):
        self.dice = dice
        self.server = server
        self.reader = reader
        self.writer = writer

    async def send(self, data):
        self.writer.write(data)
        await self.writer.drain()

    async def pause(self, longest):
        await asyncio.sleep(self.dice.random() * longest)

    def end(self):
        """Sends the end of the bytes. Over TLS only a close can do that."""
        if self.writer.can_write_eof():
            self.writer.write_eof()

    async def read_all(self):
        while await asyncio.wait_for(self.reader.read(65536), 5):
            pass

    def request(self):
        return self.dice.choice(self.server.requests)

    async def send_pieces(self, data):
        while data:
            size = self.dice.choice((1, 1, 2, 3, 7, 50, 1000))
            await self.send(data[:size])
            data = data[size:]
            await self.pause(0.02)

    async def in_pieces(self):
        await self.send_pieces(self.request())
        self.end()
        await self.read_all()

    async def in_chunks(self):
        extension = self.dice.choice((b"", b";a=b", b';a="' + b"x" * 500 + b'"'))
        await self.send_pieces(messages.chunked(self.request(), self.dice.choice((1, 10, 1000)), extension))
        self.end()
        await self.read_all()

    async def last_chunk(self):
        await self.send(b"POST / HTTP/1.1\r\nContent-Type: application/xml\r\nTransfer-Encoding: chunked\r\n\r\n")
        for piece in (b"0\r\n", b"\r", b"\n"):
            await self.pause(0.05)
            await self.send(piece)
        await self.read_all()

    def with_errors(self, message):
        data = bytearray(message)
        for _ in range(self.dice.randint(1, 3)):
            data[self.dice.randrange(len(data))] ^= 1 << self.dice.randrange(8)
        return bytes(data)

    async def mutated(self):
        message = self.request() if self.dice.random() < 0.8 else messages.chunked(self.request(), 20)
        await self.send_pieces(self.with_errors(message))
        self.end()
        await self.read_all()

    async def cut(self):
        data = self.request()
        await self.send(data[:self.dice.randrange(len(data))])
        await self.pause(2)

    async def drip(self):
        for byte in self.request()[:self.dice.randint(1, 20)]:
            await self.send(bytes([byte]))
            await asyncio.sleep(1)

    async def slow_reader(self):
        await self.send(self.server.large * self.dice.randint(1, 5))
        for _ in range(self.dice.randint(1, 10)):
            await self.reader.read(100)
            await self.pause(1)

    async def pipeline(self):
        await self.send(self.request() * 50)
        await self.pause(0.5)
        connection = self.writer.get_extra_info("socket")
        if connection: # none if the server has ended TLS
            # Close with a reset.
            connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))

    async def junk(self):
        await self.send(self.dice.choice((self.dice.randbytes(2000), b"\x16\x03\x01" + self.dice.randbytes(500),
                                          b"M-POST / HTTP/1.1\r\n" + b"X: y\r\n" * 5000,
                                          b"POST / HTTP/1.1\r\nContent-Length: 99999999999999999999\r\n\r\n",
                                          b"POST / HTTP/1.1\r\nContent-Type: \x9b\xff\x00\r\n\r\n")))
        await self.pause(0.2)

    async def wrong_login(self):
        header = b"Authorization: Basic " + base64.b64encode(b"bob:" + self.dice.randbytes(5).hex().encode())
        await self.send(messages.xml_enumeration(b"QAV_System", header + b"\r\n"))
        await self.read_all()

    async def silence(self):
        await self.pause(3)

    # What a client sends to the port with TLS instead of a handshake.

    def hello(self):
        """The first flight of a handshake."""
        outgoing = ssl.MemoryBIO()
        tls = CONTEXT.wrap_bio(ssl.MemoryBIO(), outgoing)
        try:
            tls.do_handshake()
        except ssl.SSLWantReadError:
            pass
        return outgoing.read()

    async def plain_http(self):
        await self.send(self.request())
        await self.read_all()

    async def garbage(self):
        await self.send(self.dice.choice((self.dice.randbytes(2000), b"\x16\x03\x01" + self.dice.randbytes(500),
                                          b"\x16\x03\x01\x40\x00" + self.dice.randbytes(16384),
                                          b"\x16\x03\x01\xff\xff" + self.dice.randbytes(65535))))
        await self.pause(0.2)

    async def mutated_hello(self):
        await self.send_pieces(self.with_errors(self.hello()))
        await self.read_all()

    async def cut_hello(self):
        data = self.hello()
        await self.send(data[:self.dice.randrange(len(data))])
        await self.pause(2)

    async def silent_after_hello(self):
        await self.send(self.hello())
        await self.reader.read(65536)
        await self.pause(2)

    async def slow_handshake(self):
        for byte in self.hello()[:self.dice.randint(1, 20)]:
            await self.send(bytes([byte]))
            await asyncio.sleep(0.5)


# Relative frequency and action.
WAYS = ((5, Client.in_pieces), (5, Client.in_chunks), (3, Client.last_chunk), (10, Client.mutated), (5, Client.cut),
        (3, Client.drip), (2, Client.slow_reader), (2, Client.pipeline), (5, Client.junk),
        (1, Client.wrong_login), (2, Client.silence))
# Of clients of the port with TLS.
TLS_WAYS = ((3, Client.plain_http), (3, Client.garbage), (5, Client.mutated_hello), (5, Client.cut_hello),
            (3, Client.silent_after_hello), (3, Client.slow_handshake))


async def connect(dice, server, way):
    if any(way is each for _, each in TLS_WAYS):
        return await asyncio.open_connection("127.0.0.1", server.tls_port)
    if server.socket and dice.random() < 0.5:
        return await asyncio.open_unix_connection(server.socket)
    if server.tls_port and dice.random() < 0.5:
        return await asyncio.open_connection("127.0.0.1", server.tls_port, ssl=CONTEXT)
    return await asyncio.open_connection("127.0.0.1", server.port)


def close(dice, writer):
    """Closes a connection, with TLS in half of all cases without close_notify."""
    if dice.random() < 0.5 and writer.get_extra_info("ssl_object"):
        writer.transport.abort()
    else:
        writer.close()


async def one_after_the_other(dice, server, ways, end):
    """Makes one connection after the other until the end time. Returns their number."""
    weights = [weight for weight, _ in ways]
    count = 0
    while time.monotonic() < end:
        _, way = dice.choices(ways, weights)[0]
        try:
            reader, writer = await connect(dice, server, way)
        except OSError: # connection limit reached: the honest clients measure whether this affects them
            await asyncio.sleep(0.1)
            continue
        count += 1
        try:
            await way(Client(dice, server, reader, writer))
        except (OSError, asyncio.TimeoutError):
            pass
        close(dice, writer)
        await asyncio.sleep(0.01)
    return count


async def all_at_once(seed, server, ways, clients, end):
    return sum(await asyncio.gather(*(one_after_the_other(random.Random(f"{seed} {i}"), server, ways, end)
                                      for i in range(clients))))


def run(pipe, seed, server, ways, clients, end):
    """Runs many clients. Writes the number of their connections to the pipe."""
    os.nice(10) # real hostile clients run on other machines and do not compete for this processor
    pipe.send(asyncio.run(all_at_once(seed, server, ways, clients, end)))
