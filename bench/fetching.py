"""How long it takes to fetch mailboxes, beside the least that any client could do and beside another client."""

import re

import mailboxes
from private_desktop import serve_mail
from slow_servers import HaltingServer, Relay, added_by_relay
from timing import Failed, Row, Spread, output, take_turns

PASSWORD = "secret"
KIB_FOR_OURSELVES = 40 * 1024

MPOP = """account default
host 127.0.0.1
port {port}
user {name}
password {password}
auth user
tls {tls}
tls_starttls off
tls_certcheck off
keep on
received_header off
delivery mbox /dev/null
uidls_file {folder}/uidls
"""


class Mail:
    """The mailboxes on their server."""

    def __init__(self, stack, folder, programs, tiny):
        many, some, few = (60, 20, 10) if tiny else (10_000, 1000, 200)
        self.folder, self.programs, self.counts = folder, programs, {"many": many, "some": some, "few": few}
        small = mailboxes.write_small(folder / "small", many)
        boxes = {"many": small, "some": small[:some], "few": small[:few],
                 "mixed": mailboxes.write_mixed(folder / "mixed", some)}
        self.counts["mixed"] = some
        self.few = [file.read_bytes() for file in boxes["few"]]
        self.ports = {way: int(port) for way, port in serve_mail(stack, PASSWORD, boxes)[1].items()}
        for name in boxes:  # the server makes its indexes
            output(self.drain(name, "plain"))

    def drain(self, name, way, port=None):
        return self.command("drain", name, way, port)

    def ours(self, name, way, port=None):
        return self.command("fetch", name, way, port)

    def command(self, program, name, way, port):
        tls = ["tls"] if way == "tls" else []
        return [self.programs / program, "127.0.0.1", port or self.ports[way], name, PASSWORD, *tls]

    def mpop(self, name, way, port=None):
        """All messages are new to it each time, as the file that knows them is taken away before it starts."""
        tls = "on" if way == "tls" else "off"
        file = self.folder / f"mpop-{name}-{way}"
        file.write_text(MPOP.format(port=port or self.ports[way], name=name, password=PASSWORD, tls=tls, folder=self.folder))
        file.chmod(0o600)
        return ["mpop", "--quiet", "--file", file]


class Fetches:
    """The workloads, each plain and with TLS."""

    def __init__(self, stack, mail, runs):
        self.stack, self.mail, self.runs = stack, mail, runs
        self.peaks, self.bytes_ = [], 0

    def rows(self, round_trips):
        yield from self.workload("many", "messages of 2 KB", 1.5, "drain")
        yield from self.workload("some", "messages of 2 KB", 1.0, "mpop")
        yield from self.workload("mixed", "mixed messages, {megabytes:.0f} MB", 1.15, "drain")
        for milliseconds in round_trips:
            yield from self.far(milliseconds)
        yield self.halting()

    def workload(self, name, text, factor, against):
        for way in ("plain", "tls"):
            commands = {"drain": self.mail.drain(name, way), "mpop": self.mail.mpop(name, way),
                        "ours": self.mail.ours(name, way)}
            times = self.times(name, commands)
            what = f"{self.mail.counts[name]:,} {text}, {way}".format(megabytes=self.bytes_ / 1e6)
            yield self.row(what, times, factor, against)

    def far(self, milliseconds):
        for way in ("plain", "tls"):
            relay = Relay(self.stack, self.mail.ports[way], milliseconds / 2000)
            commands = {"drain": self.mail.drain("few", way, relay.port), "mpop": self.mail.mpop("few", way, relay.port),
                        "ours": self.mail.ours("few", way, relay.port)}
            what = f"{self.mail.counts['few']} messages of 2 KB at a round trip of {milliseconds} ms, {way}"
            yield self.row(what, self.times("few", commands), 1.25, "drain")

    def halting(self):
        server = HaltingServer(self.stack, self.mail.few)
        times = self.times("few", {"ours": self.mail.ours("few", "plain", server.port)})
        what = f"{self.mail.counts['few']} messages of 2 KB without PIPELINING, in two pieces each, plain"
        return Row(what, ["", "", times["ours"].text(3)], "under 0.2 s", times["ours"].median < 0.2)

    def memory(self):
        """Of the mixed mailbox, once that was fetched."""
        least = self.bytes_ / 1024
        peak = Spread([each / 1024 for each in self.peaks])
        goal = 2 * least + KIB_FOR_OURSELVES
        return Row(f"Most memory, {self.mail.counts['mixed']:,} mixed messages, {self.bytes_ / 1e6:.0f} MB",
                   [f"{peak.text(1)} MiB"], f"twice the mailbox and 40 MiB: {goal / 1024:.1f} MiB",
                   max(self.peaks) <= goal)

    def times(self, name, commands):
        def check(who, said):
            if who == "mpop":
                return self.check_mpop(name)
            found = re.fullmatch(r"messages=(\d+) bytes=(\d+)(?: seconds=\S+ peakKiB=(\d+))?\n", said)
            if not found or int(found[1]) != self.mail.counts[name]:
                raise Failed(f"{who} said of the mailbox {name}: {said}")
            if name == "mixed" and who == "ours":
                self.bytes_ = int(found[2])
                self.peaks.append(int(found[3]))

        return take_turns(commands, self.runs, check)

    def check_mpop(self, name):
        uidls = self.mail.folder / "uidls"
        known = uidls.read_bytes().count(b"\n")
        uidls.unlink()
        if known < self.mail.counts[name]:
            raise Failed(f"mpop knows {known} messages of the mailbox {name}")

    @staticmethod
    def row(what, times, factor, against):
        cells = [times[who].text(3) if who in times else "" for who in ("drain", "mpop", "ours")]
        ratio = times["ours"].median / times[against].median
        other = "the drain" if against == "drain" else against
        return Row(f"{what}", cells, f"{factor:g} x {other}; it is {ratio:.2f} x", ratio <= factor)


def relay_overhead(mail, milliseconds):
    return 1000 * added_by_relay(mail.ports["plain"], milliseconds / 2000)
