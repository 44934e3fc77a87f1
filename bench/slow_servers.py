"""What stands between a client and its mail: a line of some length, and a server that sends in small pieces.

Both run on threads of the caller, which does nothing but wait for a client's process meanwhile.
"""

import contextlib
import poplib
import queue
import socket
import statistics
import threading
import time


class Listener:
    """A port of 127.0.0.1, each of whose connections is served on a thread until the end."""

    def __init__(self, stack):
        self.socket = socket.create_server(("127.0.0.1", 0))
        self.port = self.socket.getsockname()[1]
        stack.callback(self.socket.close)
        stack.callback(self.socket.shutdown, socket.SHUT_RDWR)
        self.beside(self.accept)

    def accept(self):
        with contextlib.suppress(OSError):  # the end
            while True:
                self.beside(self.serve, self.socket.accept()[0])

    @staticmethod
    def beside(work, *given):
        threading.Thread(target=work, args=given, daemon=True).start()


class Relay(Listener):
    """A line to `port` on which every byte takes so many seconds each way, and which is as wide as any.

    What comes is acknowledged at once, as the program has its system do: a server that holds a second answer back until
    the first is acknowledged would wait for the relay's system otherwise, and not for the client's.

    The system takes a connection at once. So that it takes as long as on a real line, what the client sends leaves it
    only after a round trip, which is when it would know of its connection; and the server hears of the connection
    half a round trip later.
    """

    def __init__(self, stack, port, one_way):
        self.there, self.one_way = port, one_way
        super().__init__(stack)

    def serve(self, client):
        begin = time.monotonic()
        outgoing = queue.SimpleQueue()
        self.beside(self.collect, client, outgoing, begin + 2 * self.one_way)
        self.sleep_until(begin + 3 * self.one_way)
        server = socket.create_connection(("127.0.0.1", self.there))
        incoming = queue.SimpleQueue()
        self.beside(self.collect, server, incoming, 0)
        self.beside(self.hand_on, outgoing, server)
        self.hand_on(incoming, client)

    def collect(self, source, line, not_before):
        """Notes for whatever comes when it is to arrive; an end comes as no bytes."""
        source.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        while True:
            try:
                came = source.recv(1 << 20)
                source.setsockopt(socket.IPPROTO_TCP, socket.TCP_QUICKACK, 1)
            except OSError:
                came = b""
            line.put((max(time.monotonic(), not_before) + self.one_way, came))
            if not came:
                return

    def hand_on(self, line, target):
        with contextlib.suppress(OSError):
            while True:
                due, bytes_ = line.get()
                self.sleep_until(due)
                if not bytes_:
                    break
                target.sendall(bytes_)
            target.shutdown(socket.SHUT_WR)

    @staticmethod
    def sleep_until(moment):
        time.sleep(max(0, moment - time.monotonic()))


class HaltingServer(Listener):
    """Knows no pipelining, and sends a message behind its status line in a piece of its own.

    The system holds the second piece back until the first is acknowledged (Nagle's algorithm), which a client's system
    puts off for 40 ms where the client sends nothing itself.
    """

    def __init__(self, stack, messages):
        self.messages = messages
        super().__init__(stack)

    def serve(self, client):
        with client, client.makefile("rb") as commands:
            client.sendall(b"+OK\r\n")
            for command in commands:
                verb, *words = command.decode().split()
                for piece in self.answer(verb.upper(), words):
                    client.sendall(piece)
                if verb.upper() == "QUIT":
                    return

    def answer(self, verb, words):
        sizes = [len(message) for message in self.messages]
        if verb in ("USER", "PASS", "NOOP", "QUIT"):
            return [b"+OK\r\n"]
        if verb == "STAT":
            return [f"+OK {len(sizes)} {sum(sizes)}\r\n".encode()]
        if verb == "RETR":
            return [b"+OK\r\n", self.messages[int(words[0]) - 1] + b".\r\n"]
        listings = {"CAPA": ["USER", "UIDL"]}
        if not words:
            listings["LIST"] = [f"{number} {size}" for number, size in enumerate(sizes, 1)]
            listings["UIDL"] = [f"{number} of-{number}" for number, _ in enumerate(sizes, 1)]
        if verb in listings:
            return ["\r\n".join(["+OK", *listings[verb], ".", ""]).encode()]
        return [b"-ERR\r\n"]


def added_by_relay(port, one_way):
    """How many seconds a relay takes in a round trip beyond those that it is to take."""
    with contextlib.ExitStack() as stack:
        direct, relayed = (round_trip(each) for each in (port, Relay(stack, port, one_way).port))
    return relayed - direct - 2 * one_way


def round_trip(port):
    """What a command and its answer take, of a server that nobody has logged in to."""
    times = []
    server = poplib.POP3("127.0.0.1", port)
    for _ in range(20):
        begin = time.monotonic()
        server.capa()
        times.append(time.monotonic() - begin)
    server.quit()
    return statistics.median(times)
