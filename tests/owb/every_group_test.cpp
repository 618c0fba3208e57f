// Every group of this host, read through the library from a real object manager and compared with other
// sources of the same data.
#include "ServedGroups.hpp"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <mntent.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <set>
#include <sstream>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/statvfs.h>
#include <sys/sysinfo.h>
#include <unistd.h>

namespace {

class EveryGroup : public ServedGroups {};

/** The row whose property has a value; an empty row and a failure if there is none. */
Row rowWith(const std::vector<Row>& rows, const std::string& property, const std::string& value) {
    for (const Row& row : rows) {
        const auto found = row.find(property);
        if (found != row.end() && found->second == value)
            return row;
    }
    ADD_FAILURE() << "no row with " << property << " " << value;
    return Row();
}

std::set<std::string> values(const std::vector<Row>& rows, const std::string& property) {
    std::set<std::string> all;
    for (const Row& row : rows) {
        const auto found = row.find(property);
        if (found != row.end())
            all.insert(found->second);
    }
    return all;
}

std::string lines(const std::string& path) {
    std::ifstream in(path);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

/** Network interfaces by number, from if_nameindex(3). */
std::map<std::string, std::string> interfaces() {
    std::map<std::string, std::string> all;
    struct if_nameindex* const names = ::if_nameindex();
    for (const struct if_nameindex* each = names; each && each->if_index != 0; ++each)
        all[std::to_string(each->if_index)] = each->if_name;
    ::if_freenameindex(names);
    return all;
}

ifreq asked(const std::string& interface, unsigned long question) {
    ifreq request{};
    interface.copy(request.ifr_name, IFNAMSIZ - 1);
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(0, ::ioctl(socket, question, &request)) << interface;
    ::close(socket);
    return request;
}

/** The counters of an interface, in the order of the columns of /proc/net/dev. */
std::vector<unsigned long long> counters(const std::string& interface) {
    std::ifstream in("/proc/net/dev");
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        std::string name;
        std::getline(fields >> std::ws, name, ':');
        if (name != interface)
            continue;
        std::vector<unsigned long long> all;
        for (unsigned long long value = 0; fields >> value;)
            all.push_back(value);
        return all;
    }
    return {};
}

TEST_F(EveryGroup, IsReadWithoutAnError) {
    run([] {
        for (long group = 0; group <= 30; ++group) {
            TestQueue q;
            EXPECT_EQ(OWB_DONE, OWB_getGroup(group, q.head())) << group;
            EXPECT_TRUE(q.isConsistent());
        }
    });
}

TEST_F(EveryGroup, Memory) {
    run([] {
        struct sysinfo system;
        ASSERT_EQ(0, ::sysinfo(&system));
        const Row memory = rowWith(rowsOf(3), "DeviceID", "memory");
        EXPECT_EQ("2", memory.at("StorageType")); // RFC 2790, hrStorageRam
        EXPECT_EQ(1ULL * system.totalram * system.mem_unit / std::stoull(memory.at("Blocksize")),
                  std::stoull(memory.at("NumberOfBlocks")));
        EXPECT_LT(std::stoull(memory.at("StorageUsed")), std::stoull(memory.at("NumberOfBlocks")));
    });
}

TEST_F(EveryGroup, TheRootFileSystem) {
    run([] {
        struct statvfs status;
        ASSERT_EQ(0, ::statvfs("/", &status));
        const std::vector<Row> fileSystems = rowsOf(20);
        const Row root = rowWith(fileSystems, "Root", "/");
        std::string type;
        FILE* const mounts = ::setmntent("/proc/self/mounts", "r");
        while (const mntent* const each = ::getmntent(mounts)) {
            if (std::strcmp(each->mnt_dir, "/") == 0)
                type = each->mnt_type; // the last one counts
        }
        ::endmntent(mounts);
        EXPECT_EQ(type, root.at("FileSystemType"));
        EXPECT_EQ(status.f_flag & ST_RDONLY ? "true" : "false", root.at("ReadOnly"));
        EXPECT_EQ("", root.at("RemoteMountPoint"));
        EXPECT_EQ(1U, values(fileSystems, "Bootable").count("true"));

        const Row extent = rowWith(rowsOf(3), "_INDEX", root.at("StorageIndex"));
        EXPECT_EQ(status.f_frsize, std::stoul(extent.at("Blocksize")));
        EXPECT_EQ(status.f_blocks, std::stoull(extent.at("NumberOfBlocks")));
        EXPECT_EQ("/", extent.at("Purpose"));

        const Row backing =
            rowWith(rowsOf(24), "Dependent",
                    "/root/cimv2:QAV_FileSystem.CreationClassName=\"QAV_FileSystem\",Name=\"/\"");
        EXPECT_EQ("/root/cimv2:QAV_StorageExtent.CreationClassName=\"QAV_StorageExtent\",DeviceID=\"" +
                      extent.at("DeviceID") + "\"",
                  backing.at("Antecedent"));
    });
}

// Compared with /proc/partitions, which lists names and sizes.
TEST_F(EveryGroup, DisksAndPartitions) {
    run([] {
        const std::vector<Row> partitions = rowsOf(19);
        const std::vector<Row> disks = rowsOf(18);
        const std::vector<Row> devices = rowsOf(21);
        std::size_t expectedPartitions = 0;
        std::istringstream all(lines("/proc/partitions"));
        std::string ignored;
        std::getline(all, ignored);
        std::string name;
        for (std::string major, minor, kilobytes; all >> major >> minor >> kilobytes >> name;) {
            if (::access(("/sys/class/block/" + name + "/partition").c_str(), F_OK) == 0) {
                ++expectedPartitions;
                EXPECT_EQ(kilobytes, rowWith(partitions, "DeviceID", name).at("Size"));
                continue;
            }
            const Row device = rowWith(devices, "_HR_DEVICE_INDEX",
                                       rowWith(disks, "MaxMediaSize", kilobytes).at("_HR_DEVICE_INDEX"));
            EXPECT_EQ("6", device.at("_HR_DEVICE_TYPE")); // RFC 2790, hrDeviceDiskStorage
        }
        EXPECT_EQ(expectedPartitions, partitions.size());
        EXPECT_GE(expectedPartitions, values(rowsOf(23), "Antecedent").size());
    });
}

TEST_F(EveryGroup, Processors) {
    run([] {
        const std::vector<Row> devices = rowsOf(21);
        const auto isProcessor = [](const Row& row) { return row.at("_HR_DEVICE_TYPE") == "3"; };
        EXPECT_EQ(::sysconf(_SC_NPROCESSORS_CONF),
                  std::count_if(devices.begin(), devices.end(), isProcessor));
        EXPECT_EQ(devices.size(), values(devices, "_HR_DEVICE_INDEX").size())
            << "an index identifies one device";
    });
}

TEST_F(EveryGroup, NetworkInterfaces) {
    run([] {
        const std::map<std::string, std::string> names = interfaces();
        const std::vector<Row> endpoints = rowsOf(9);
        const std::vector<Row> networks = rowsOf(25);
        const std::vector<Row> devices = rowsOf(21);
        EXPECT_EQ(names.size(), endpoints.size());
        EXPECT_EQ(names.size(), networks.size());
        for (const auto& [index, name] : names) {
            const Row endpoint = rowWith(endpoints, "_INDEX", index);
            EXPECT_EQ(name, endpoint.at("Name"));
            EXPECT_EQ(firstLine("/proc/sys/kernel/hostname"), endpoint.at("SystemName"));
            EXPECT_EQ(std::to_string(asked(name, SIOCGIFMTU).ifr_mtu), endpoint.at("MaxDataSize"));
            const bool isUp = (asked(name, SIOCGIFFLAGS).ifr_flags & IFF_UP) != 0;
            EXPECT_EQ(isUp ? "2" : "3", endpoint.at("EnabledState"));
            const sockaddr hardware = asked(name, SIOCGIFHWADDR).ifr_hwaddr;
            if (hardware.sa_family == ARPHRD_ETHER) {
                std::string address;
                for (int i = 0; i < 6; ++i) {
                    char octet[3];
                    std::snprintf(octet, sizeof octet, "%02x", hardware.sa_data[i] & 0xFF);
                    address += octet;
                }
                EXPECT_EQ(address, endpoint.at("MACAddress"));
            }
            const Row network = rowWith(networks, "_HR_NETWORK_INDEX", index);
            const Row device = rowWith(devices, "_HR_DEVICE_INDEX", network.at("_HR_DEVICE_INDEX"));
            EXPECT_EQ("4", device.at("_HR_DEVICE_TYPE")); // RFC 2790, hrDeviceNetwork
        }
    });
}

TEST_F(EveryGroup, CountersOfNetworkInterfaces) {
    run([] {
        const std::map<std::string, std::size_t> columns = {
            {"InOctets", 0},  {"InErrors", 2},     {"InDiscards", 3}, {"InNUcastPkts", 7},
            {"OutOctets", 8}, {"OutUcastPkts", 9}, {"OutErrors", 10}, {"OutDiscards", 11}};
        for (const auto& [index, name] : interfaces()) {
            const std::vector<unsigned long long> before = counters(name);
            const Row row = rowWith(rowsOf(10), "InstanceID", name);
            const std::vector<unsigned long long> after = counters(name);
            for (const auto& [property, column] : columns) {
                EXPECT_LE(before.at(column), std::stoull(row.at(property))) << name << " " << property;
                EXPECT_GE(after.at(column), std::stoull(row.at(property))) << name << " " << property;
            }
        }
    });
}

TEST_F(EveryGroup, EndpointsAndPorts) {
    run([] {
        const std::vector<Row> pairs = rowsOf(8);
        EXPECT_EQ(interfaces().size(), pairs.size());
        for (const auto& [index, name] : interfaces()) {
            const Row pair = rowWith(pairs, "Antecedent",
                                     "/root/cimv2:QAV_NetworkPortStatistics.InstanceID=\"" + name + "\"");
            EXPECT_EQ("/root/cimv2:QAV_LANEndpoint.SystemCreationClassName=\"QAV_System\",SystemName=\"" +
                          firstLine("/proc/sys/kernel/hostname") +
                          "\",CreationClassName=\"QAV_LANEndpoint\",Name=\"" + name + "\"",
                      pair.at("Dependent"));
        }
    });
}

TEST_F(EveryGroup, InstalledPackages) {
    if (::access("/usr/bin/dpkg-query", X_OK) != 0)
        GTEST_SKIP() << "no dpkg-query to compare with";
    const support::ProgramResult listed =
        support::runProgram({"/usr/bin/dpkg-query", "-W", "-f=${db:Status-Status} ${Package}-${Version}\\n"});
    ASSERT_EQ(0, listed.exitCode) << listed.err;
    std::set<std::string> expected;
    std::istringstream packages(listed.out);
    for (std::string status, name; packages >> status >> name;) {
        if (status == "installed")
            expected.insert(name);
    }
    run([&] {
        const std::vector<Row> rows = rowsOf(15);
        EXPECT_EQ(expected, values(rows, "Name"));
        EXPECT_EQ(rows.size(),
                  static_cast<std::size_t>(std::count_if(rows.begin(), rows.end(), [](const Row& row) {
                      return row.count("InstalledDate") == 1;
                  })));
    });
}

TEST_F(EveryGroup, ModulesAndTheirPlaces) {
    run([] {
        const std::vector<Row> modules = rowsOf(27);
        const std::vector<Row> locations = rowsOf(30);
        const std::vector<Row> packages = rowsOf(28);
        const std::vector<Row> associations = rowsOf(29);
        EXPECT_EQ(modules.size(), values(modules, "_INDEX").size());
        EXPECT_EQ(modules.size(), locations.size());
        EXPECT_EQ(modules.size(), packages.size());
        EXPECT_EQ(modules.size(), associations.size());
        for (const Row& module : modules) {
            const std::string path = "/root/cimv2:QAV_XRULogicalModule.CreationClassName=\""
                                     "QAV_XRULogicalModule\",DeviceID=\"" +
                                     module.at("DeviceID") + "\"";
            EXPECT_EQ("/root/cimv2:QAV_K70Chassis.Tag=\"Chassis\",CreationClassName=\"QAV_K70Chassis\"",
                      rowWith(packages, "Dependent", path).at("Antecedent"));
            const std::string location = rowWith(associations, "SystemElement", path).at("SameElement");
            const std::string before = "/root/cimv2:QAV_CoreTelephony_ModuleLocation.Key=\"";
            ASSERT_EQ(before, location.substr(0, before.size()));
            rowWith(locations, "Key", location.substr(before.size(), location.size() - before.size() - 1));
            // PCI devices are cards, except bridges.
            const std::string pci = "pci:";
            if (module.at("DeviceID").compare(0, pci.size(), pci) == 0) {
                const std::string device = "/sys/bus/pci/devices/" + module.at("DeviceID").substr(pci.size());
                EXPECT_NE("0x06", firstLine(device + "/class").substr(0, 4)) << device;
                EXPECT_EQ(firstLine(device + "/vendor").substr(2) + ":" +
                              firstLine(device + "/device").substr(2),
                          module.at("VendorEquipmentType"));
            }
        }
    });
}

} // namespace
