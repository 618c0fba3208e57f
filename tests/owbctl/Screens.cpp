#include "Screens.hpp"

#include <cstdlib>
#include <fstream>

namespace owbctl_test {

FixtureHost::FixtureHost() {
    writeSystem();
    writeInterfaces();
    writeStorage();
    writeInstances();
    m_manager = std::make_unique<support::Manager>(std::vector<std::string>{
        "--root", m_directory.file("host"), "--instances", m_directory.file("site")});
}

void FixtureHost::write(const std::string& path, const std::string& content) const {
    m_directory.write("host" + path, content);
}

void FixtureHost::writeSystem() const {
    write("/proc/sys/kernel/hostname", "box.example.org\n");
    write("/proc/sys/kernel/pid_max", "32768\n");
    write("/proc/1/stat", "");
    write("/proc/meminfo", "MemTotal:       16316412 kB\nMemFree:         8123456 kB\n"
                           "SwapTotal:       2097148 kB\nSwapFree:        2097148 kB\n");
}

/** @param values files of the interface: index, flags, operstate, hardware type, address, MTU, speed */
void FixtureHost::writeInterface(const std::string& name, const std::vector<std::string>& values) const {
    const char* const files[] = {"ifindex", "flags", "operstate", "type", "address", "mtu", "speed"};
    for (std::size_t i = 0; i < values.size(); ++i)
        write("/sys/class/net/" + name + "/" + files[i], values[i] + "\n");
}

void FixtureHost::writeInterfaces() const {
    writeInterface("lo", {"1", "0x9", "unknown", "772", "00:00:00:00:00:00", "65536"});
    writeInterface("eth0", {"2", "0x1003", "up", "1", "52:54:00:12:34:56", "1500", "1000"});
    writeInterface("eth1", {"3", "0x1002", "down", "1", "52:54:00:12:34:57", "1500", "-1"});
    writeInterface("wlp4s0", {"4", "0x1003", "up", "1", "a0:36:9f:00:11:22", "1500"});
    writeInterface("br-2f1c77d0a9e4", {"5", "0x1003", "lowerlayerdown", "1", "02:42:5e:aa:bb:cc", "1500"});
    write("/sys/class/net/eth0/ifalias", "uplink to switch 3, port 17\n");
    write("/proc/net/dev",
          "Inter-|   Receive                            |  Transmit\n"
          " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs drop\n"
          "    lo:  948123     812    0    0    0     0          0         0   948123     812    0    0 0 0 "
          "0 0\n"
          "  eth0: 98214477123 71234567 3   12    0     0          0    120345 4412345678 31234567 0 0 0 0 0 "
          "0\n"
          "  eth1:       0       0    0    0    0     0          0         0        0       0    0    0 0 0 "
          "0 0\n"
          "wlp4s0: 1234567   12345    0    7    0     0          0       321   765432    5432    0    0 0 0 "
          "0 0\n"
          "br-2f1c77d0a9e4: 0      0    0    0    0     0          0         0        0       0    0 0 0 0 0 "
          "0\n");
}

void FixtureHost::writeStorage() const {
    write("/proc/filesystems",
          "nodev\tsysfs\nnodev\ttmpfs\nnodev\tproc\n\text4\n\tvfat\n\txfs\nnodev\tnfs4\n");
    write("/proc/self/mountinfo",
          "22 1 259:2 / / rw,relatime - ext4 /dev/nvme0n1p2 rw\n"
          "23 22 259:1 / /boot/efi rw,relatime - vfat /dev/nvme0n1p1 rw\n"
          "24 22 0:22 / /run rw,nosuid - tmpfs tmpfs rw\n"
          "31 22 8:1 / /srv/media ro,relatime - xfs /dev/sda1 ro\n"
          "40 22 0:44 / /home rw,relatime - nfs4 files.example.org:/export/home rw\n"
          "52 22 8:2 / /srv/backups/of/the/department/of/mathematics rw,relatime - xfs /dev/sda2 rw\n");
    for (const char* const disk : {"nvme0n1", "sda"}) {
        const std::string directory = std::string("/sys/block/") + disk;
        write(directory + "/dev", disk[0] == 'n' ? "259:0\n" : "8:0\n");
        write(directory + "/size", disk[0] == 'n' ? "1000215216\n" : "7814037168\n");
        write(directory + "/device/state", "running\n");
        for (const char* const ordinal : {"1", "2"}) {
            const std::string partition = directory + "/" + disk + (disk[0] == 'n' ? "p" : "") + ordinal;
            write(partition + "/dev", (disk[0] == 'n' ? "259:" : "8:") + std::string(ordinal) + "\n");
            write(partition + "/partition", std::string(ordinal) + "\n");
            write(partition + "/size", ordinal[0] == '1' ? "1048576\n" : "999163904\n");
        }
    }
}

// What Linux does not report: the time of the last change of an interface, dates of backups.
void FixtureHost::writeInstances() const {
    m_directory.write("site/instances.json", R"({
  "QAV_LANEndpoint": [
    { "SystemCreationClassName": "QAV_System", "SystemName": "box.example.org",
      "CreationClassName": "QAV_LANEndpoint", "Name": "ib0", "_INDEX": 6, "MACAddress": "80000208fe80",
      "Description": "ib0", "TimeOfLastStateChange": "20261122101503.000000+060", "OperationalStatus": [2, 3],
      "EnabledState": 2, "Speed": 56000000000, "MaxDataSize": 2044, "ProtocolIFType": 199 }
  ],
  "QAV_FileSystem": [
    { "CreationClassName": "QAV_FileSystem", "Name": "/srv/tape", "Index": 60, "Root": "/srv/tape",
      "RemoteMountPoint": "", "FileSystemType": "ltfs", "ReadOnly": false, "Bootable": false, "StorageIndex": 0,
      "LastFullBackupDate": "20261122101503.000000+000", "LastPartialBackupDate": "20261123221503.000000+000" }
  ],
  "QAV_StorageExtent": [
    { "CreationClassName": "QAV_StorageExtent", "DeviceID": "tape", "StorageType": 1, "Purpose": "/srv/tape",
      "Blocksize": 524288, "NumberOfBlocks": 22888000, "StorageUsed": 1234567, "_INDEX": 900 }
  ]
})");
}

std::string shown(const std::vector<std::string>& arguments, unsigned short columns) {
    std::vector<std::string> command{OWBCTL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    support::Terminal terminal(command, columns);
    const int status = terminal.wait();
    return terminal.screen() + (status == 0 ? "" : "[exit status " + std::to_string(status) + "]\n");
}

void expectScreen(const std::string& name, const std::string& screen) {
    const std::string path = OWBCTL_SCREENS "/" + name + ".txt";
    if (std::getenv("OWB_UPDATE_SCREENS") != nullptr) {
        std::ofstream(path) << screen;
        return;
    }
    std::ifstream file(path);
    const std::string expected{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(screen == expected) << "screen " << name << " is\n"
                                    << screen << "but should be\n"
                                    << expected
                                    << "If the new one is right: OWB_UPDATE_SCREENS=1, see Screens.hpp";
}

std::unique_ptr<FixtureHost> Screens::s_host;

void Screens::SetUpTestSuite() {
    s_host = std::make_unique<FixtureHost>();
}

void Screens::TearDownTestSuite() {
    s_host.reset();
}

void Screens::expectScreenAt(unsigned short columns, const std::string& name,
                             const std::vector<std::string>& arguments) {
    std::vector<std::string> all{"--url", host().url()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    expectScreen(name + "." + std::to_string(columns), shown(all, columns));
}

void Screens::expectScreens(const std::string& name, const std::vector<std::string>& arguments) {
    expectScreenAt(80, name, arguments);
    expectScreenAt(140, name, arguments);
}

} // namespace owbctl_test
