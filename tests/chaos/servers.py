"""The servers that chaos.py attacks."""
import collections
import json
import os
import signal
import subprocess
import threading
import urllib.parse

import hostile
import honest


class Server:
    """A running server, which has printed that it is ready."""

    name = None
    clients = None  # hostile ones at a time
    dripping_clients = None
    honest_client = None
    requests = None  # that hostile clients vary
    large = None  # a request with a long reply
    ways = None
    socket = None  # None: it has no Unix-domain socket
    tls_port = None  # None: it has none
    tls_authority = None  # file with the issuer of its certificate

    def __init__(self, command):
        self.process = subprocess.Popen(command, stderr=subprocess.PIPE, text=True, errors="replace")
        ready = self.process.stderr.readline()
        if "ready on" not in ready:
            raise RuntimeError(f"the {self.name} did not start: {ready}")
        self.port, self.tls_port = self._ports(ready)
        self.log = collections.deque(maxlen=200)
        threading.Thread(target=lambda: self.log.extend(self.process.stderr), daemon=True).start()

    @staticmethod
    def _ports(ready):
        """The ports without and with TLS in the line "ready on PATH and ADDRESS:PORT and ADDRESS:PORT (TLS)"."""
        plain, _, tls = ready.rstrip().removesuffix(" (TLS)").rpartition(":")
        if "(TLS)" not in ready:
            return int(tls), None
        return int(plain.rpartition(" and ")[0].rpartition(":")[2]), int(tls)

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

    def kill(self):
        self.process.kill()
        self.process.wait()


class Manager(Server):
    """The object manager: a fake host, one class of 3000 instances, all sockets, users."""

    name = "object manager"
    clients = 400
    dripping_clients = 200
    honest_client = honest.ManagerClient
    requests = hostile.RECORDED
    large = hostile.LARGE_ENUMERATION
    ways = hostile.WAYS + hostile.TLS_WAYS

    def __init__(self, bin_dir, directory):
        self.tls_authority = directory + "/cert.pem"
        self.socket = directory + "/socket"
        super().__init__(
            [bin_dir + "/owbcimomd", "--socket", self.socket, "--listen", "0", "--state", directory + "/state.json",
             "--users", self._users(bin_dir, directory), "--root", self._root(directory),
             "--instances", self._instances(directory), "--max-connections", "800", *self._tls(directory)])

    @staticmethod
    def _users(bin_dir, directory):
        path = directory + "/users"
        subprocess.run([bin_dir + "/owbcimom-passwd", path, "bob"], input="secret\n", text=True, check=True)
        return path

    def _tls(self, directory):
        key = directory + "/key.pem"
        subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "2",
                        "-keyout", key, "-out", self.tls_authority, "-subj", "/CN=localhost", "-addext",
                        "subjectAltName=DNS:localhost"], check=True, stderr=subprocess.DEVNULL)
        return ["--tls-listen", "0", "--tls-cert", self.tls_authority, "--tls-key", key]

    @staticmethod
    def _root(directory):
        os.makedirs(directory + "/host/proc/sys/kernel")
        with open(directory + "/host/proc/sys/kernel/hostname", "wb") as file:
            file.write(honest.HOST + b"\n")
        return directory + "/host"

    @staticmethod
    def _instances(directory):
        os.mkdir(directory + "/instances")
        chassis = [{"Tag": f"chassis-{i}", "CreationClassName": "QAV_K70Chassis", "Model": f"{i:05}" + "x" * 195}
                   for i in range(3000)]
        with open(directory + "/instances/chassis.json", "w", encoding="ascii") as file:
            json.dump({"QAV_K70Chassis": chassis}, file)
        return directory + "/instances"


class Exporter(Server):
    """The exporter of this object manager. It serves 64 connections at a time, of which a quarter is reserved. It reads few groups:
    a sanitized object manager under attack may take a second for each."""

    name = "exporter"
    clients = 40
    dripping_clients = 40
    honest_client = honest.Scraper
    requests = hostile.SCRAPES
    large = hostile.LARGE_SCRAPE
    ways = tuple(each for each in hostile.WAYS if each[1] is not hostile.Client.wrong_login)

    def __init__(self, bin_dir, manager):
        url = "owbinary.wbem://localhost:" + urllib.parse.quote(manager.socket, safe="").lower()
        super().__init__([bin_dir + "/owb-exporter", "--listen", "0", "--groups", "0,2", "--url", url])
