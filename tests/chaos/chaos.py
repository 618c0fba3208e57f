#!/usr/bin/env python3
"""Runs many hostile clients and some honest clients of the object manager and of its exporter at the same time.
scripts/chaos runs it.

Fails if one of the servers crashes or exits with an error, if an honest client gets no answer or a late one, or if
memory or descriptors grow.
"""
import argparse
import multiprocessing
import os
import shutil
import sys
import tempfile
import time

import hostile
import honest
from servers import Exporter, Manager

MEASURED_SECONDS = 10


def started(target, *arguments):
    """Starts a process. Returns it and the reading end of the pipe for its result."""
    receiving, sending = multiprocessing.Pipe(False)
    process = multiprocessing.Process(target=target, args=(sending, *arguments))
    process.start()
    sending.close()
    return process, receiving


def result(process, pipe):
    try:
        return pipe.recv()
    except EOFError:
        return "the process of the clients ended without a result"
    finally:
        process.join()


class Attack:
    """Runs hostile and honest clients of one server at the same time."""

    def __init__(self, seed, server, ways, clients, end):
        self.hostile_clients = started(hostile.run, seed, server, ways, clients, end)
        self.honest_clients = started(honest.run, server.honest_client(server), end)
        self.connections = self.answers = self.fault = self.slowest = None

    def finish(self):
        self.answers = result(*self.honest_clients)
        if isinstance(self.answers, str):
            self.hostile_clients[0].terminate() # the test has failed: do not wait
        self.connections = result(*self.hostile_clients)
        self.fault = next((each for each in (self.answers, self.connections) if isinstance(each, str)), None)
        self.slowest = 1000 * max(times[-1] for times in self.answers if times) if not self.fault else None


class Target:
    """A server, and what happens to it in each phase."""

    def __init__(self, server):
        self.server = server
        self.descriptors = server.descriptors()
        self.attacks = {}
        self.states = {}

    def attack(self, phase, seed, end):
        clients, ways = {"alone": (0, self.server.ways),
                         "drip": (self.server.dripping_clients, ((1, hostile.Client.drip),))}.get(
                             phase, (self.server.clients, self.server.ways))
        self.attacks[phase] = Attack(seed, self.server, ways, clients, end)

    def finish(self, phase):
        """Waits until the clients have ended, and notes memory and descriptors unless the server has ended, too."""
        self.attacks[phase].finish()
        if self.server.is_alive():
            self.states[phase] = {"descriptors": self._settled_descriptors(), "memory": self.server.memory()}

    def _settled_descriptors(self):
        """The number of descriptors, as soon as it is the one before the attack or after 20 s."""
        end = time.monotonic() + 20
        while self.server.descriptors() != self.descriptors and time.monotonic() < end:
            time.sleep(0.1)
        return self.server.descriptors()

    def faults(self, options):
        for attack in self.attacks.values():
            if attack.fault:
                yield "clients: " + attack.fault
            elif attack.slowest > options.latest:
                yield f"an honest answer came after {attack.slowest:.0f} ms"
        start, end = self.states.get("warm-up"), self.states.get("rest")
        if not end:
            yield f"it died: exit status {self.server.process.returncode}; the end of its log:\n" + "".join(self.server.log)
            return
        if end["descriptors"] > start["descriptors"]:
            yield f"descriptors grew from {start['descriptors']} to {end['descriptors']}"
        if end["memory"] > start["memory"] + options.growth:
            yield f"memory grew from {start['memory']} kB by more than {options.growth} kB to {end['memory']} kB"
        if self.server.end() != 0:
            yield f"it did not end well: exit status {self.server.process.returncode}; the end of its log:\n" + \
                "".join(self.server.log)

    def print_summary(self):
        print(f"| {self.server.name} | |\n|---|---:|")
        alone, drip, *attacks = self.attacks.values()
        if not any(attack.fault for attack in self.attacks.values()):
            print(f"| hostile connections, {self.server.clients} at a time | {sum(each.connections for each in attacks)} |")
            for index, way in enumerate(("", " over TLS")):
                times = sorted(seconds for attack in attacks for seconds in attack.answers[index])
                if times:
                    print(f"| answers to honest clients meanwhile{way} | {len(times)} |")
                    print(f"| median of these | {1000 * times[len(times) // 2]:.1f} ms |")
                    print(f"| slowest of these | {1000 * times[-1]:.0f} ms |")
            print(f"| slowest with {self.server.dripping_clients} connections at a byte a second | {drip.slowest:.0f} ms |")
            print(f"| slowest without hostile clients | {alone.slowest:.0f} ms |")
        start, end = self.states.get("warm-up"), self.states.get("rest")
        print(f"| deaths | {0 if end else 1} |")
        if end:
            print(f"| memory after a third of the time, and at the end | {start['memory']}, {end['memory']} kB |")
            print("| descriptors after a third of the time, and at the end | "
                  f"{start['descriptors']}, {end['descriptors']} |")
        print(flush=True)


def attack_all(options, targets):
    # The baseline is the memory after clients of all kinds.
    for phase, seconds in (("alone", MEASURED_SECONDS), ("drip", MEASURED_SECONDS), ("warm-up", options.seconds / 3),
                           ("rest", options.seconds * 2 / 3)):
        end = time.monotonic() + seconds
        for target in targets:
            target.attack(phase, f"{options.seed} {phase} {target.server.name}", end)
        for target in targets:
            target.finish(phase)


def chaos(options, directory):
    servers = []
    faults = []
    try:
        servers.append(Manager(options.bin, directory))
        if not options.manager_only:
            servers.append(Exporter(options.bin, servers[0]))
        targets = [Target(server) for server in servers]
        attack_all(options, targets)
        for target in reversed(targets): # the exporter ends before the object manager, from which it reads
            target.print_summary()
            faults += [f"{target.server.name}: {fault}" for fault in target.faults(options)]
    finally:
        for server in servers:
            server.kill()
    for fault in faults:
        print("chaos: " + fault, file=sys.stderr)
    return 1 if faults else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("bin", help="directory of owbcimomd, owbcimom-passwd and owb-exporter")
    parser.add_argument("seconds", type=int)
    parser.add_argument("seed")
    parser.add_argument("--latest", type=float, default=1000, help="ms that an honest answer may take")
    parser.add_argument("--growth", type=int, default=4096, help="kB that memory may grow by")
    parser.add_argument("--manager-only", action="store_true", help="attack no exporter")
    options = parser.parse_args()
    # In memory: writes of hostile clients must not wait for a disk.
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    directory = tempfile.mkdtemp(prefix="owb-chaos.", dir=memory)
    try:
        return chaos(options, directory)
    finally:
        shutil.rmtree(directory)


if __name__ == "__main__":
    sys.exit(main())
