"""Runs a fleet of hosts on this machine, and one Prometheus that watches it: fleet.py BIN TOOLS FILES HOSTS SECONDS [PAGES]

Each host has its own loopback address, object manager and exporter. The first one is this machine; the others are fake, from a
few files each, whose counters grow. BIN has our programs, TOOLS Prometheus, FILES its rules and consoles. PAGES is a directory
for pictures of the consoles, which chromium makes.

Prints figures, and fails unless all scrapes succeed, only the expected alerts fire, and each of them clears.
"""

import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import urllib.error
import urllib.parse
import urllib.request

PORT = 9588
INTERVAL = 10  # seconds between scrapes of a host
TICKS = os.sysconf("SC_CLK_TCK")


class Failure(Exception):
    pass


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def start(command, log):
    with open(log, "ab") as errors:
        return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=errors)


def cpu_seconds(pid):
    """Processor time of a process and of the children that it has waited for."""
    with open(f"/proc/{pid}/stat", encoding="utf-8") as file:
        fields = file.read().rpartition(") ")[2].split()
    return sum(int(field) for field in fields[11:15]) / TICKS


def memory(pid):
    """Resident and proportional size, in MB."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="utf-8") as file:
        text = file.read()
    return [int(re.search(rf"^{name}: +(\d+) kB", text, re.M)[1]) / 1024 for name in ("Rss", "Pss")]


class Host:
    """A host. Number 0 is this machine."""

    def __init__(self, directory, bin_directory, number):
        self.directory = os.path.join(directory, f"host{number}")
        self.address = f"127.9.{number // 250}.{number % 250 + 1}:{PORT}"
        self.number = number
        self.bin = bin_directory
        self.manager = self.exporter = None
        os.makedirs(self.directory)
        if number > 0:
            self.write_fixture()

    def write_fixture(self):
        root = self.directory + "/root"
        write(root + "/proc/sys/kernel/hostname", f"host-{self.number}\n")
        write(root + "/proc/sys/kernel/osrelease", "6.1.0\n")
        write(root + "/proc/sys/net/ipv4/ip_forward", "0\n")
        write(root + "/etc/os-release", f'PRETTY_NAME="Debian GNU/Linux {11 + self.number % 3}"\n')
        write(root + "/proc/stat", "cpu 1 2 3 4\nbtime 1700000000\n")
        write(root + "/proc/meminfo", "MemTotal: 1048576 kB\nMemFree: 524288 kB\nSwapTotal: 0 kB\nSwapFree: 0 kB\n")
        with open("/proc/net/snmp", encoding="utf-8") as file:
            write(root + "/proc/net/snmp", file.read())
        for index, name in enumerate(("lo", "eth0", "eth1"), 1):
            write(f"{root}/sys/class/net/{name}/ifindex", f"{index}\n")
            write(f"{root}/sys/class/net/{name}/mtu", "1500\n")
            write(f"{root}/sys/class/net/{name}/operstate", "up\n")
        self.grow(0)
        chassis = {"Tag": "c", "CreationClassName": "QAV_K70Chassis", "Manufacturer": "Example",
                   "Model": f"Model {self.number % 4}", "SerialNumber": f"S{self.number:06}"}
        write(self.directory + "/site/chassis.json", json.dumps({"QAV_K70Chassis": [chassis]}))

    def grow(self, seconds):
        """Writes the counters that the interfaces have after some seconds."""
        if self.number == 0:
            return
        lines = [f"{name}: {n} {n // 500} 0 0 0 0 0 0 {n // 3} {n // 900} 0 0 0 0 0 0\n"
                 for name, n in (("lo", 1000), ("eth0", int(seconds * 1000 * self.number)), ("eth1", int(seconds * 50)))]
        path = self.directory + "/root/proc/net/dev"
        write(path + ".new", "Inter-|   Receive\n face |bytes\n" + "".join(lines))
        os.rename(path + ".new", path)

    def start_manager(self):
        socket = self.directory + "/socket"
        fake = [] if self.number == 0 else ["--root", self.directory + "/root", "--instances", self.directory + "/site"]
        self.manager = start([self.bin + "/owbcimomd", "--socket", socket, "--no-state", *fake], self.directory + "/log")

    def start(self):
        self.start_manager()
        url = "owbinary.wbem://localhost:" + urllib.parse.quote(self.directory + "/socket", safe="").lower()
        self.exporter = start([self.bin + "/owb-exporter", "--listen", self.address, "--url", url], self.directory + "/log")

    def kill_manager(self):
        self.manager.kill()
        self.manager.wait()
        if os.path.exists(self.directory + "/socket"):
            os.unlink(self.directory + "/socket")

    def kill(self):
        self.kill_manager()
        self.exporter.kill()
        self.exporter.wait()


class Prometheus:
    def __init__(self, directory, tools, files, hosts):
        self.log = directory + "/prometheus.log"
        write(directory + "/targets.json", json.dumps([{"targets": [host.address for host in hosts]}]))
        for name in ("owb-recording.yml", "owb-alerts.yml"):
            with open(f"{files}/{name}", encoding="utf-8") as file:
                # Alerts fire after 10 s instead of minutes.
                write(f"{directory}/{name}", re.sub(r"for: \d+m$", "for: 10s", file.read(), flags=re.M))
        write(directory + "/prometheus.yml", f"""
global: {{scrape_interval: {INTERVAL}s, scrape_timeout: {INTERVAL}s, evaluation_interval: 5s}}
rule_files: [owb-recording.yml, owb-alerts.yml]
scrape_configs:
  - job_name: owb
    file_sd_configs: [{{files: [targets.json]}}]
""")
        self.process = start(
            [tools + "/usr/bin/prometheus", f"--config.file={directory}/prometheus.yml",
             f"--storage.tsdb.path={directory}/data", "--web.listen-address=127.0.0.1:0",
             f"--web.console.templates={files}/consoles", f"--web.console.libraries={files}/console_libraries"], self.log)
        self.url = None
        self.await_true("Prometheus", 60, self.is_ready)

    def is_ready(self):
        with open(self.log, encoding="utf-8") as file:
            text = file.read()
        address = re.search(r'"Listening on" address=(\S+)', text)
        if address is None or "Server is ready" not in text:
            return False
        self.url = "http://" + address[1]
        return True

    def await_true(self, what, limit, condition):
        begin = time.monotonic()
        while not condition():
            if time.monotonic() - begin > limit:
                raise Failure(f"{what}: timed out after {limit} s")
            time.sleep(0.5)
        return time.monotonic() - begin

    def number(self, expression):
        """The only value of an expression; 0 if it has none."""
        url = f"{self.url}/api/v1/query?" + urllib.parse.urlencode({"query": expression})
        with urllib.request.urlopen(url, timeout=30) as reply:
            result = json.load(reply)["data"]["result"]
        return float(result[0]["value"][1]) if result else 0.0

    def firing(self, alert):
        return self.number(f'count(ALERTS{{alertname=~"{alert}", alertstate="firing"}})')

    def own(self, name):
        """One of its own metrics, without labels."""
        with urllib.request.urlopen(self.url + "/metrics", timeout=30) as reply:
            return float(re.search(rf"^{name} (\S+)$", reply.read().decode(), re.M)[1])


class Fleet:
    def __init__(self, directory, arguments):
        bin_directory, self.tools, self.files, hosts, seconds, *pages = arguments
        self.seconds = int(seconds)
        self.pages = pages[0] if pages else None
        self.directory = directory
        self.hosts = [Host(directory, bin_directory, number) for number in range(int(hosts))]
        self.prometheus = None
        self.begin = time.monotonic()

    def run(self):
        for host in self.hosts:
            host.start()
        self.prometheus = Prometheus(self.directory, self.tools, self.files, self.hosts)
        taken = self.prometheus.await_true("first scrapes", 120, lambda: self.prometheus.number("sum(up)") == len(self.hosts))
        print(f"hosts                 {len(self.hosts)}, all scraped after {taken:.0f} s", flush=True)
        self.measure()
        self.kill_some()

    def cpu(self):
        return {"exporters": sum(cpu_seconds(host.exporter.pid) for host in self.hosts),
                "object managers": sum(cpu_seconds(host.manager.pid) for host in self.hosts),
                "Prometheus": cpu_seconds(self.prometheus.process.pid)}

    def measure(self):
        """Scrapes for some seconds in which nothing else happens."""
        before, begin = self.cpu(), time.monotonic()
        while time.monotonic() - begin < self.seconds:
            for host in self.hosts:
                host.grow(time.monotonic() - self.begin)
            time.sleep(INTERVAL / 2)
        passed, after = time.monotonic() - begin, self.cpu()
        window = f"[{int(passed)}s]"
        scrapes = self.prometheus.number(f'sum(count_over_time(up{{job="owb"}}{window}))')
        failures = scrapes - self.prometheus.number(f'sum(sum_over_time(up{{job="owb"}}{window}))')
        unread = scrapes - failures - self.prometheus.number(f"sum(sum_over_time(owb_scrape_success{window}))")
        print(f"scrapes               {scrapes:.0f} in {passed:.0f} s, {failures:.0f} failed, {unread:.0f} incomplete")
        for part, seconds in after.items():
            print(f"CPU of {part:15} {(seconds - before[part]) * 1000 / scrapes:.2f} ms a scrape")
        for part, pids in (("an exporter", [host.exporter.pid for host in self.hosts]),
                           ("an object manager", [host.manager.pid for host in self.hosts]),
                           ("Prometheus", [self.prometheus.process.pid])):
            rss, pss = (sum(sizes) / len(pids) for sizes in zip(*map(memory, pids)))
            print(f"memory of {part:18} {rss:.1f} MB resident, {pss:.1f} MB without what it shares")
        samples = self.prometheus.number('sum(scrape_samples_scraped{job="owb"})')
        print(f"samples a scrape      {samples / len(self.hosts):.0f}; of this machine "
              f"{self.prometheus.number(self.of_this_machine('scrape_samples_scraped')):.0f}")
        print(f"series                {self.prometheus.own('prometheus_tsdb_head_series'):.0f}")
        print(f"scrape duration       median {self.quantile(0.5):.1f} ms, 99th percentile {self.quantile(0.99):.1f} ms")
        print(f"rules                 {self.rule_seconds() * 1000:.0f} ms for one evaluation", flush=True)
        if failures or unread:
            raise Failure("scrapes failed")
        if alerts := self.prometheus.firing("Owb.*"):
            raise Failure(f"{alerts:.0f} alerts fire without reason")

    def of_this_machine(self, metric):
        return f'{metric}{{instance="{self.hosts[0].address}"}}'

    def quantile(self, share):
        return self.prometheus.number(f'quantile({share}, scrape_duration_seconds{{job="owb"}})') * 1000

    def rule_seconds(self):
        with urllib.request.urlopen(self.prometheus.url + "/api/v1/rules", timeout=30) as reply:
            return sum(group["evaluationTime"] for group in json.load(reply)["data"]["groups"])

    def kill_some(self):
        """Kills a tenth of the hosts, and the object manager of one more; brings them back."""
        killed = self.hosts[-max(1, len(self.hosts) // 10):]
        lonely = self.hosts[-len(killed) - 1]
        for host in killed:
            host.kill()
        lonely.kill_manager()
        expected = {"OwbHostGone": len(killed), "OwbObjectManagerUnreachable": 1}
        firing = {alert: self.prometheus.await_true(f"{alert} does not fire", 90,
                                                    lambda a=alert, n=number: self.prometheus.firing(a) == n)
                  for alert, number in expected.items()}
        if self.prometheus.firing("Owb.*") != sum(expected.values()):
            raise Failure("other alerts fire, too")
        print(f"alerts fire           {expected['OwbHostGone']} hosts and 1 object manager, {sum(firing.values()):.0f} s after "
              "they were killed", flush=True)
        if self.pages:
            self.picture()
        for host in killed:
            host.start()
        lonely.start_manager()
        taken = self.prometheus.await_true("alerts do not clear", 90, lambda: self.prometheus.firing("Owb.*") == 0)
        print(f"alerts clear          {taken:.0f} s after they were started again")

    def picture(self):
        os.makedirs(self.pages, exist_ok=True)
        for name, path, height in (("fleet", "owb.html?hours=0.1", 1500),
                                   ("host", f"owb-host.html?hours=0.1&instance={self.hosts[0].address}", 1500),
                                   ("host-gone", f"owb-host.html?hours=0.1&instance={self.hosts[-1].address}", 1500)):
            command = ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--enable-logging=stderr",
                       f"--user-data-dir={self.directory}/chromium", f"--window-size=1280,{height}",
                       "--virtual-time-budget=10000"]
            url = f"{self.prometheus.url}/consoles/{path}"
            picture = f"{self.pages}/{name}.png"
            drawn = subprocess.run([*command, f"--screenshot={picture}", url], capture_output=True, text=True, check=True)
            page = subprocess.run([*command, "--dump-dom", url], capture_output=True, text=True, check=True)
            errors = re.findall(r".*:CONSOLE[:(].*", drawn.stderr + page.stderr)
            if errors or 'data-drawn="yes"' not in page.stdout:
                raise Failure(f"{path}: script failed: {errors}")
            print(f"page                  {picture}", flush=True)

    def stop(self):
        processes = [process for host in self.hosts for process in (host.exporter, host.manager)]
        processes.append(self.prometheus.process if self.prometheus else None)
        for process in filter(None, processes):
            if process.poll() is None:
                process.terminate()
        for process in filter(None, processes):
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    directory = tempfile.mkdtemp(prefix="owb-fleet.")
    fleet = Fleet(directory, sys.argv[1:])
    try:
        fleet.run()
    except (Failure, urllib.error.URLError) as failure:
        sys.exit(f"fleet: {failure}")
    finally:
        fleet.stop()
        shutil.rmtree(directory)


main()
