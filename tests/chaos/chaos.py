#!/usr/bin/env python3
"""Runs many hostile clients and some honest clients at the same time. scripts/chaos runs it.

Fails if the object manager crashes or exits with an error, if an honest client gets no answer or a late one, or if
memory or descriptors grow.
"""
import argparse
import collections
import json
import multiprocessing
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

import hostile
import honest

HOSTILE_CLIENTS = 400
DRIPPING_CLIENTS = 200
MEASURED_SECONDS = 10


class Manager:
    """The object manager: a fake host, one class of 3000 instances, both sockets, users."""

    host = b"chaos.example.org"

    def __init__(self, bin_dir, directory):
        self.socket = directory + "/socket"
        self.log = collections.deque(maxlen=200)
        self.process = subprocess.Popen(
            [bin_dir + "/owbcimomd", "--socket", self.socket, "--listen", "0", "--state", directory + "/state.json",
             "--users", self._users(bin_dir, directory), "--root", self._root(directory),
             "--instances", self._instances(directory), "--max-connections", "800"],
            stderr=subprocess.PIPE, text=True, errors="replace")
        ready = self.process.stderr.readline()
        if "ready on" not in ready:
            raise RuntimeError("owbcimomd did not start: " + ready)
        self.port = int(ready.rpartition(":")[2])
        threading.Thread(target=lambda: self.log.extend(self.process.stderr), daemon=True).start()

    @staticmethod
    def _users(bin_dir, directory):
        path = directory + "/users"
        subprocess.run([bin_dir + "/owbcimom-passwd", path, "bob"], input="secret\n", text=True, check=True)
        return path

    @classmethod
    def _root(cls, directory):
        os.makedirs(directory + "/host/proc/sys/kernel")
        with open(directory + "/host/proc/sys/kernel/hostname", "wb") as file:
            file.write(cls.host + b"\n")
        return directory + "/host"

    @staticmethod
    def _instances(directory):
        os.mkdir(directory + "/instances")
        chassis = [{"Tag": f"chassis-{i}", "CreationClassName": "QAV_K70Chassis", "Model": "x" * 200}
                   for i in range(3000)]
        with open(directory + "/instances/chassis.json", "w", encoding="ascii") as file:
            json.dump({"QAV_K70Chassis": chassis}, file)
        return directory + "/instances"

    def is_alive(self):
        return self.process.poll() is None

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.process.pid}/fd"))

    def memory(self):
        """Resident memory in kB."""
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as file:
            return next(int(line.split()[1]) for line in file if line.startswith("VmRSS:"))

    def end(self):
        """Terminates it and returns its exit status."""
        self.process.send_signal(signal.SIGTERM)
        return self.process.wait(60)


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


class Phase:
    """Runs hostile and honest clients at the same time."""

    def __init__(self, seed, manager, ways, clients, seconds):
        end = time.monotonic() + seconds
        hostile_clients = started(hostile.run, seed, manager, ways, clients, end)
        honest_clients = started(honest.run, manager, end)
        self.answers = result(*honest_clients)
        if isinstance(self.answers, str):
            hostile_clients[0].terminate() # the test has failed: do not wait
        self.connections = result(*hostile_clients)
        self.fault = next((each for each in (self.answers, self.connections) if isinstance(each, str)), None)
        self.slowest = 1000 * self.answers[-1] if not self.fault else None


def settled_descriptors(manager, wanted):
    """The number of descriptors, as soon as it is the expected one or after 20 s."""
    end = time.monotonic() + 20
    while manager.descriptors() != wanted and time.monotonic() < end:
        time.sleep(0.1)
    return manager.descriptors()


def faults_of(options, manager, phases, start, end):
    for phase in phases:
        if phase.fault:
            yield "clients: " + phase.fault
        elif phase.slowest > options.latest:
            yield f"an honest answer came after {phase.slowest:.0f} ms"
    if end is None:
        yield f"the object manager died: exit status {manager.process.returncode}; the end of its log:\n" + \
            "".join(manager.log)
        return
    if end["descriptors"] > start["descriptors"]:
        yield f"descriptors grew from {start['descriptors']} to {end['descriptors']}"
    if end["memory"] > start["memory"] + options.growth:
        yield f"memory grew from {start['memory']} kB by more than {options.growth} kB to {end['memory']} kB"
    if manager.end() != 0:
        yield f"the object manager did not end well: exit status {manager.process.returncode}; the end of its " \
            "log:\n" + "".join(manager.log)


def state_of(manager, descriptors):
    """Memory and descriptors after the end of all connections; None if the object manager has ended."""
    if not manager.is_alive():
        return None
    return {"descriptors": settled_descriptors(manager, descriptors), "memory": manager.memory()}


def print_summary(alone, drip, phases, start, end):
    print("| | |\n|---|---:|")
    if not any(phase.fault for phase in (alone, drip, *phases)):
        connections = sum(phase.connections for phase in phases)
        times = sorted(seconds for phase in phases for seconds in phase.answers)
        print(f"| hostile connections, {HOSTILE_CLIENTS} at a time | {connections} |")
        print(f"| answers to honest clients meanwhile | {len(times)} |")
        print(f"| median of these | {1000 * times[len(times) // 2]:.1f} ms |")
        print(f"| slowest of these | {1000 * times[-1]:.0f} ms |")
        print(f"| slowest with {DRIPPING_CLIENTS} connections at a byte a second | {drip.slowest:.0f} ms |")
        print(f"| slowest without hostile clients | {alone.slowest:.0f} ms |")
    print(f"| deaths | {0 if end else 1} |")
    if start and end:
        print(f"| memory after a third of the time, and at the end | {start['memory']}, {end['memory']} kB |")
        print(f"| descriptors after a third of the time, and at the end | {start['descriptors']}, {end['descriptors']} |")


def chaos(options, directory):
    manager = Manager(options.bin, directory)
    descriptors = manager.descriptors()
    try:
        alone = Phase(options.seed, manager, hostile.WAYS, 0, MEASURED_SECONDS)
        drip = Phase(options.seed, manager, ((1, hostile.Client.drip),), DRIPPING_CLIENTS, MEASURED_SECONDS)
        # The baseline is the memory after clients of all kinds.
        warm_up = Phase(f"{options.seed} warm-up", manager, hostile.WAYS, HOSTILE_CLIENTS, options.seconds / 3)
        start = state_of(manager, descriptors)
        rest = Phase(options.seed, manager, hostile.WAYS, HOSTILE_CLIENTS, options.seconds * 2 / 3)
        end = state_of(manager, descriptors)
        print_summary(alone, drip, [warm_up, rest], start, end)
        faults = list(faults_of(options, manager, [alone, drip, warm_up, rest], start, end))
    finally:
        manager.process.kill()
        manager.process.wait()
    for fault in faults:
        print("chaos: " + fault, file=sys.stderr)
    return 1 if faults else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("bin", help="directory of owbcimomd and owbcimom-passwd")
    parser.add_argument("seconds", type=int)
    parser.add_argument("seed")
    parser.add_argument("--latest", type=float, default=1000, help="ms that an honest answer may take")
    parser.add_argument("--growth", type=int, default=4096, help="kB that memory may grow by")
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
