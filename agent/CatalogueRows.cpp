// The rows of the catalogue, in the order of ExtItemList.
#include "agent/Catalogue.hpp"

namespace agent {
namespace {

// clang-format off

// DSP0134, System Enclosure or Chassis Types.
constexpr ValueName chassisTypeNames[] = {
    {1, "other"}, {2, "unknown"}, {3, "desktop"}, {4, "low profile desktop"}, {5, "pizza box"},
    {6, "mini tower"}, {7, "tower"}, {8, "portable"}, {9, "laptop"}, {10, "notebook"}, {11, "hand held"},
    {12, "docking station"}, {13, "all in one"}, {14, "sub notebook"}, {15, "space-saving"},
    {16, "lunch box"}, {17, "main server chassis"}, {18, "expansion chassis"}, {19, "sub chassis"},
    {20, "bus expansion chassis"}, {21, "peripheral chassis"}, {22, "RAID chassis"},
    {23, "rack mount chassis"}, {24, "sealed PC"}, {25, "multi-system chassis"}, {26, "compact PCI"},
    {27, "advanced TCA"}, {28, "blade"}, {29, "blade enclosure"}, {30, "tablet"}, {31, "convertible"},
    {32, "detachable"}, {33, "IoT gateway"}, {34, "embedded PC"}, {35, "mini PC"}, {36, "stick PC"}};

// RFC 4133, PhysicalClass.
constexpr ValueName physicalClassNames[] = {
    {1, "other"}, {2, "unknown"}, {3, "chassis"}, {4, "backplane"}, {5, "container"}, {6, "power supply"},
    {7, "fan"}, {8, "sensor"}, {9, "module"}, {10, "port"}, {11, "stack"}, {12, "processor"}};

// RFC 2790, hrStorageTypes.
constexpr ValueName storageTypeNames[] = {
    {1, "other"}, {2, "memory"}, {3, "virtual memory"}, {4, "fixed disk"}, {5, "removable disk"},
    {6, "floppy disk"}, {7, "compact disc"}, {8, "RAM disk"}, {9, "flash memory"}, {10, "network disk"}};

// RFC 4022, tcpRtoAlgorithm.
constexpr ValueName timeoutAlgorithmNames[] = {
    {1, "other"}, {2, "constant"}, {3, "MIL-STD-1778"}, {4, "Van Jacobson"}, {5, "RFC 2988"}};

// RFC 4022, tcpConnectionState.
constexpr ValueName connectionStateNames[] = {
    {1, "closed"}, {2, "listen"}, {3, "SYN sent"}, {4, "SYN received"}, {5, "established"},
    {6, "FIN wait 1"}, {7, "FIN wait 2"}, {8, "close wait"}, {9, "last ACK"}, {10, "closing"},
    {11, "time wait"}, {12, "delete"}};

// CIM_ManagedSystemElement.OperationalStatus.
constexpr ValueName operationalStatusNames[] = {
    {0, "unknown"}, {1, "other"}, {2, "OK"}, {3, "degraded"}, {4, "stressed"}, {5, "predictive failure"},
    {6, "error"}, {7, "non-recoverable error"}, {8, "starting"}, {9, "stopping"}, {10, "stopped"},
    {11, "in service"}, {12, "no contact"}, {13, "lost communication"}, {14, "aborted"}, {15, "dormant"},
    {16, "supporting entity in error"}, {17, "completed"}, {18, "power mode"}};

// The same for a network interface: the names are those of the status in RFC 2863 that owbcimomd maps to the code.
constexpr ValueName interfaceStatusNames[] = {
    {0, "unknown"}, {1, "other"}, {2, "up"}, {3, "degraded"}, {4, "stressed"}, {5, "predictive failure"},
    {6, "not present"}, {7, "non-recoverable error"}, {8, "starting"}, {9, "stopping"}, {10, "down"},
    {11, "testing"}, {12, "no contact"}, {13, "lost communication"}, {14, "aborted"}, {15, "dormant"},
    {16, "lower layer down"}, {17, "completed"}, {18, "power mode"}};

// CIM_EnabledLogicalElement.EnabledState.
constexpr ValueName enabledStateNames[] = {
    {0, "unknown"}, {1, "other"}, {2, "enabled"}, {3, "disabled"}, {4, "shutting down"},
    {5, "not applicable"}, {6, "enabled but offline"}, {7, "in test"}, {8, "deferred"}, {9, "quiescent"},
    {10, "starting"}};

// IANAifType-MIB, the common types.
constexpr ValueName interfaceTypeNames[] = {
    {1, "other"}, {6, "Ethernet"}, {23, "PPP"}, {24, "loopback"}, {53, "virtual"}, {71, "wireless LAN"},
    {131, "tunnel"}, {135, "VLAN"}, {161, "link aggregation"}, {199, "InfiniBand"}, {209, "bridge"}};

// RFC 4293, ipForwarding.
constexpr ValueName forwardingNames[] = {
    {1, "forwarding"}, {2, "not forwarding"}};

// CIM_SoftwareIdentity.Classifications.
constexpr ValueName softwareClassificationNames[] = {
    {0, "unknown"}, {1, "other"}, {2, "driver"}, {3, "configuration software"}, {4, "application"},
    {5, "instrumentation"}, {6, "firmware or BIOS"}, {7, "diagnostic software"}, {8, "operating system"},
    {9, "middleware"}, {10, "firmware"}, {11, "BIOS or FCode"}, {12, "support or service pack"},
    {13, "software bundle"}};

// RFC 2790, hrSWRunType.
constexpr ValueName runTypeNames[] = {
    {1, "unknown"}, {2, "operating system"}, {3, "device driver"}, {4, "application"}};

// CIM_Process.ExecutionState; the names are those of Linux: a blocked process is stopped, a terminated one
// a zombie.
constexpr ValueName executionStateNames[] = {
    {0, "unknown"}, {1, "other"}, {2, "ready"}, {3, "running"}, {4, "stopped"}, {5, "waiting"},
    {6, "suspended"}, {7, "zombie"}};

// CIM_MediaAccessDevice.Capabilities.
constexpr ValueName diskCapabilityNames[] = {
    {0, "unknown"}, {1, "other"}, {2, "sequential access"}, {3, "random access"}, {4, "writing"},
    {5, "encryption"}, {6, "compression"}, {7, "removable media"}, {8, "manual cleaning"},
    {9, "automatic cleaning"}, {10, "SMART notification"}, {11, "dual-sided media"},
    {12, "eject while mounted"}};

// RFC 2790, hrDiskStorageMedia.
constexpr ValueName diskMediumNames[] = {
    {1, "other"}, {2, "unknown"}, {3, "hard disk"}, {4, "floppy disk"}, {5, "read-only optical disk"},
    {6, "write-once optical disk"}, {7, "rewritable optical disk"}, {8, "RAM disk"}};

// RFC 2790, hrDeviceTypes.
constexpr ValueName deviceTypeNames[] = {
    {1, "other"}, {2, "unknown"}, {3, "processor"}, {4, "network"}, {5, "printer"}, {6, "disk"},
    {10, "video"}, {11, "audio"}, {12, "coprocessor"}, {13, "keyboard"}, {14, "modem"},
    {15, "parallel port"}, {16, "pointing device"}, {17, "serial port"}, {18, "tape"}, {19, "clock"},
    {20, "volatile memory"}, {21, "non-volatile memory"}};

// RFC 2790, hrDeviceStatus.
constexpr ValueName deviceStatusNames[] = {
    {1, "unknown"}, {2, "running"}, {3, "warning"}, {4, "testing"}, {5, "down"}};

constexpr bool writable = true;
constexpr bool readOnly = false;
constexpr bool identifying = true;

} // namespace

const std::array<Attribute, attributeCount> attributes = {{
    // 0 QAV_K70Chassis
    {0, 1, "Model", Kind::text, "", {"entPhysicalDescr", "47.1.1.1.1.2"},
     "Product name of the host."},
    {0, 2, "VendorEquipmentType", Kind::text, "", {"entPhysicalVendorType", "47.1.1.1.1.3"},
     "Product family of the host, as its vendor names it."},
    {0, 6, "ElementName", Kind::text, "", {"entPhysicalName", "47.1.1.1.1.7"},
     "Name that the site gives to the enclosure.", {}, writable},
    {0, 7, "Version", Kind::text, "", {"entPhysicalHardwareRev", "47.1.1.1.1.8"},
     "Hardware revision of the enclosure."},
    {0, 10, "SerialNumber", Kind::text, "", {"entPhysicalSerialNum", "47.1.1.1.1.11"},
     "Serial number of the enclosure."},
    {0, 11, "Manufacturer", Kind::text, "", {"entPhysicalMfgName", "47.1.1.1.1.12"},
     "Manufacturer of the enclosure."},
    {0, 12, "PartNumber", Kind::text, "", {"entPhysicalModelName", "47.1.1.1.1.13"},
     "Part number under which the vendor sells the host."},
    {0, 13, "OtherIdentifyingInfo", Kind::text, "", {"entPhysicalAlias", "47.1.1.1.1.14"},
     "Alias that the site gives to the enclosure.", {}, writable},
    {0, 14, "UserTracking", Kind::text, "", {"entPhysicalAssetID", "47.1.1.1.1.15"},
     "Asset number that the site gives to the enclosure.", {}, writable},
    {0, 15, "CanBeFRUed", Kind::flag, "", {"entPhysicalIsFRU", "47.1.1.1.1.16"},
     "Whether the enclosure can be replaced in the field."},
    {0, 4, "PhysicalType", Kind::state, "", {"entPhysicalClass", "47.1.1.1.1.5"},
     "Kind of enclosure, a code of SMBIOS (DSP0134).", chassisTypeNames},
    {0, 16, "Location", Kind::text, "", {},
     "Location of the enclosure.", {}, writable},
    {0, 0, "_INDEX", Kind::index, "", {"entPhysicalIndex", "47.1.1.1.1.1"},
     "Index of the enclosure among the physical parts of the host."},
    {0, 19, "_CONTAINED_IN", Kind::reference, "", {"entPhysicalContainedIn", "47.1.1.1.1.4"},
     "Index of the part that contains the enclosure; 0 for none."},
    {0, 20, "PresentStatus", Kind::text, "", {},
     "Status of the enclosure, in words."},
    // 26 QAV_K70ExpansionChassis
    {26, 2, "VendorEquipmentType", Kind::text, "", {"entPhysicalVendorType", "47.1.1.1.1.3"},
     "Product family of the enclosure, as its vendor names it."},
    {26, 6, "ElementName", Kind::text, "", {"entPhysicalName", "47.1.1.1.1.7"},
     "Name that the site gives to the enclosure.", {}, writable},
    {26, 7, "Version", Kind::text, "", {"entPhysicalHardwareRev", "47.1.1.1.1.8"},
     "Hardware revision of the enclosure."},
    {26, 10, "SerialNumber", Kind::text, "", {"entPhysicalSerialNum", "47.1.1.1.1.11"},
     "Serial number of the enclosure."},
    {26, 11, "Manufacturer", Kind::text, "", {"entPhysicalMfgName", "47.1.1.1.1.12"},
     "Manufacturer of the enclosure."},
    {26, 12, "PartNumber", Kind::text, "", {"entPhysicalModelName", "47.1.1.1.1.13"},
     "Part number under which the vendor sells the enclosure."},
    {26, 13, "OtherIdentifyingInfo", Kind::text, "", {"entPhysicalAlias", "47.1.1.1.1.14"},
     "Alias that the site gives to the enclosure.", {}, writable},
    {26, 14, "UserTracking", Kind::text, "", {"entPhysicalAssetID", "47.1.1.1.1.15"},
     "Asset number that the site gives to the enclosure.", {}, writable},
    {26, 15, "CanBeFRUed", Kind::flag, "", {"entPhysicalIsFRU", "47.1.1.1.1.16"},
     "Whether the enclosure can be replaced in the field."},
    {26, 4, "PhysicalType", Kind::state, "", {"entPhysicalClass", "47.1.1.1.1.5"},
     "Kind of enclosure, a code of SMBIOS (DSP0134).", chassisTypeNames},
    {26, 0, "_INDEX", Kind::index, "", {"entPhysicalIndex", "47.1.1.1.1.1"},
     "Index of the enclosure among the physical parts of the host."},
    {26, 17, "Tag", Kind::key, "", {"entPhysicalName", "47.1.1.1.1.7"},
     "Name of the enclosure, unique on the host.", {}, readOnly, identifying},
    {26, 20, "PresentStatus", Kind::text, "", {},
     "Status of the enclosure, in words."},
    // 27 QAV_XRULogicalModule
    {27, 2, "VendorEquipmentType", Kind::text, "", {"entPhysicalVendorType", "47.1.1.1.1.3"},
     "Type of the module, as its vendor names it."},
    {27, 7, "Version", Kind::text, "", {"entPhysicalHardwareRev", "47.1.1.1.1.8"},
     "Hardware revision of the module."},
    {27, 10, "SerialNumber", Kind::text, "", {"entPhysicalSerialNum", "47.1.1.1.1.11"},
     "Serial number of the module."},
    {27, 11, "Manufacturer", Kind::text, "", {"entPhysicalMfgName", "47.1.1.1.1.12"},
     "Manufacturer of the module."},
    {27, 12, "PartNumber", Kind::text, "", {"entPhysicalModelName", "47.1.1.1.1.13"},
     "Part number under which the vendor sells the module."},
    {27, 13, "OtherIdentifyingInfo", Kind::text, "", {"entPhysicalAlias", "47.1.1.1.1.14"},
     "Alias that the site gives to the module.", {}, writable},
    {27, 14, "UserTracking", Kind::text, "", {"entPhysicalAssetID", "47.1.1.1.1.15"},
     "Asset number that the site gives to the module.", {}, writable},
    {27, 15, "CanBeFRUed", Kind::flag, "", {"entPhysicalIsFRU", "47.1.1.1.1.16"},
     "Whether the module can be replaced in the field."},
    {27, 4, "PhysicalType", Kind::state, "", {"entPhysicalClass", "47.1.1.1.1.5"},
     "Kind of physical part, a code of RFC 4133.", physicalClassNames},
    {27, 0, "_INDEX", Kind::index, "", {"entPhysicalIndex", "47.1.1.1.1.1"},
     "Index of the module among the physical parts of the host."},
    {27, 18, "DeviceID", Kind::key, "", {"entPhysicalName", "47.1.1.1.1.7"},
     "Name of the module, unique on the host and derived from its slot.", {}, readOnly, identifying},
    {27, 19, "_CONTAINED_IN", Kind::reference, "", {"entPhysicalContainedIn", "47.1.1.1.1.4"},
     "Index of the enclosure (group 0) that contains the module."},
    {27, 20, "PresentStatus", Kind::text, "", {},
     "Status of the module, in words."},
    // 3 QAV_StorageExtent
    {3, 1, "StorageType", Kind::state, "", {"hrStorageType", "25.2.3.1.2"},
     "Kind of storage.", storageTypeNames},
    {3, 2, "Purpose", Kind::text, "", {"hrStorageDescr", "25.2.3.1.3"},
     "What the storage is: memory, swap space, or the mount point of a file system.", {}, readOnly, identifying},
    {3, 3, "Blocksize", Kind::size, "Bytes", {"hrStorageAllocationUnits", "25.2.3.1.4"},
     "Size of a block, the allocation unit of the storage."},
    {3, 4, "NumberOfBlocks", Kind::size, "Blocks", {"hrStorageSize", "25.2.3.1.5"},
     "Size of the storage."},
    {3, 5, "StorageUsed", Kind::size, "Blocks", {"hrStorageUsed", "25.2.3.1.6"},
     "Part of the storage that is allocated."},
    {3, 6, "AllocationFailures", Kind::counter, "Requests", {"hrStorageAllocationFailures", "25.2.3.1.7"},
     "Requests for storage that failed for lack of space."},
    {3, 7, "DeviceID", Kind::key, "", {},
     "Name of the storage, unique on the host."},
    {3, 8, "_INDEX", Kind::index, "", {"hrStorageIndex", "25.2.3.1.1"},
     "Index of the storage."},
    // 17 QAV_OperatingSystem
    {17, 0, "LastBootUpTime", Kind::date, "", {"hrSystemUptime", "25.1.1"},
     "Time at which the host was booted."},
    {17, 1, "LocalDateTime", Kind::date, "", {"hrSystemDate", "25.1.2"},
     "Date and time of the host, with the offset from UTC."},
    // 4 QAV_OperatingSystem
    {4, 0, "LastBootUpTime", Kind::date, "", {"hrSystemUptime", "25.1.1"},
     "Time at which the host was booted."},
    {4, 1, "LocalDateTime", Kind::date, "", {"hrSystemDate", "25.1.2"},
     "Date and time of the host, with the offset from UTC."},
    {4, 2, "_INIT_LOAD_DEVICE", Kind::reference, "", {"hrSystemInitialLoadDevice", "25.1.3"},
     "Index of the disk (group 21) from which the host boots."},
    {4, 3, "_INIT_LOAD_PARAMETERS", Kind::text, "", {"hrSystemInitialLoadParameters", "25.1.4"},
     "Command line of the kernel."},
    {4, 4, "NumberOfUsers", Kind::gauge, "Users", {"hrSystemNumUsers", "25.1.5"},
     "Login sessions on the host."},
    {4, 5, "NumberOfProcesses", Kind::gauge, "Processes", {"hrSystemProcesses", "25.1.6"},
     "Processes on the host."},
    {4, 6, "MaxNumberOfProcesses", Kind::gauge, "Processes", {"hrSystemMaxProcesses", "25.1.7"},
     "Limit of the number of processes."},
    // 1 QAV_System
    {1, 0, "LastChangeTime", Kind::date, "", {},
     "Time at which the name of the host or of its operating system last changed."},
    // 2 QAV_System
    {2, 4, "SystemName", Kind::text, "", {"sysName", "1.5"},
     "Name of the host."},
    {2, 3, "PrimaryOwnerContact", Kind::text, "", {"sysContact", "1.4"},
     "Person to contact about the host.", {}, writable},
    {2, 5, "InstalledLocation", Kind::text, "", {"sysLocation", "1.6"},
     "Location of the host.", {}, writable},
    {2, 6, "SysServices", Kind::state, "", {"sysServices", "1.7"},
     "Network layers that the host serves, as a sum: 4 routes IP, 8 transport, 64 applications."},
    {2, 1, "SNMPObjectID", Kind::text, "", {"sysObjectID", "1.2"},
     "Object identifier that the vendor assigns to the product."},
    {2, 0, "Description", Kind::text, "", {"sysDescr", "1.1"},
     "Kernel, host name and kernel version in one text."},
    {2, 8, "SystemVersion", Kind::text, "", {},
     "Name and version of the operating system distribution."},
    // 6 QAV_TCPStatisticalData
    {6, 4, "ActiveOpens", Kind::counter, "Connections", {"tcpActiveOpens", "6.5"},
     "Connections that this host started to open."},
    {6, 5, "PassiveOpens", Kind::counter, "Connections", {"tcpPassiveOpens", "6.6"},
     "Connections that a listener on this host accepted."},
    {6, 6, "AttemptFails", Kind::counter, "Connections", {"tcpAttemptFails", "6.7"},
     "Connection attempts that failed."},
    {6, 7, "EstabResets", Kind::counter, "Connections", {"tcpEstabResets", "6.8"},
     "Open connections that were reset."},
    {6, 8, "CurrEstab", Kind::gauge, "Connections", {"tcpCurrEstab", "6.9"},
     "Connections that are open now."},
    {6, 9, "InSegs", Kind::counter, "Segments", {"tcpInSegs", "6.10"},
     "Segments received, with errors or without."},
    {6, 10, "OutSegs", Kind::counter, "Segments", {"tcpOutSegs", "6.11"},
     "Segments sent, without retransmissions."},
    {6, 11, "RetransSegs", Kind::counter, "Segments", {"tcpRetransSegs", "6.12"},
     "Segments sent again."},
    {6, 12, "InErrs", Kind::counter, "Segments", {"tcpInErrs", "6.14"},
     "Segments received with an error, such as a wrong checksum."},
    {6, 13, "OutRsts", Kind::counter, "Segments", {"tcpOutRsts", "6.15"},
     "Segments sent that reset a connection."},
    // 5 QAV_TCPProtocolEndpoint
    {5, 0, "TimeoutAlgorithm", Kind::state, "", {"tcpRtoAlgorithm", "6.1"},
     "Algorithm that determines the retransmission timeout.", timeoutAlgorithmNames},
    {5, 1, "TimeoutMin", Kind::gauge, "MilliSeconds", {"tcpRtoMin", "6.2"},
     "Shortest retransmission timeout."},
    {5, 2, "TimeoutMax", Kind::gauge, "MilliSeconds", {"tcpRtoMax", "6.3"},
     "Longest retransmission timeout."},
    {5, 3, "MaxConnections", Kind::gauge, "Connections", {"tcpMaxConn", "6.4"},
     "Limit of the number of connections; -1 if there is no fixed limit."},
    // 7 QAV_TCPProtocolEndpoint
    {7, 0, "ConnectionState", Kind::state, "", {"tcpConnState", "6.13.1.1"},
     "State of the connection.", connectionStateNames},
    {7, 1, "LocalAddress", Kind::index, "", {"tcpConnLocalAddress", "6.13.1.2"},
     "IP address of the local end.", {}, readOnly, identifying},
    {7, 2, "LocalPort", Kind::index, "", {"tcpConnLocalPort", "6.13.1.3"},
     "Port of the local end.", {}, readOnly, identifying},
    {7, 3, "RemoteAddress", Kind::index, "", {"tcpConnRemAddress", "6.13.1.4"},
     "IP address of the remote end; all zeros for a listener.", {}, readOnly, identifying},
    {7, 4, "RemotePort", Kind::index, "", {"tcpConnRemPort", "6.13.1.5"},
     "Port of the remote end; 0 for a listener.", {}, readOnly, identifying},
    // 8 QAV_LANEndpointNetworkPortAssociation
    {8, 0, "Dependent", Kind::reference, "", {},
     "Path of the network interface (group 9).", {}, readOnly, identifying},
    {8, 1, "Antecedent", Kind::reference, "", {},
     "Path of its counters (group 10)."},
    // 9 QAV_LANEndpoint
    {9, 23, "SystemCreationClassName", Kind::key, "", {},
     "Class of the host that the interface belongs to."},
    {9, 22, "SystemName", Kind::key, "", {},
     "Name of the host that the interface belongs to."},
    {9, 25, "CreationClassName", Kind::key, "", {},
     "Class of the interface."},
    {9, 24, "Name", Kind::key, "", {"ifName", "31.1.1.1.1"},
     "Name of the interface in the kernel.", {}, readOnly, identifying},
    {9, 27, "_INDEX", Kind::index, "", {"ifIndex", "2.2.1.1"},
     "Index of the interface in the kernel."},
    {9, 5, "MACAddress", Kind::text, "", {"ifPhysAddress", "2.2.1.6"},
     "MAC address, twelve hexadecimal digits without separators."},
    {9, 1, "Description", Kind::text, "", {"ifDescr", "2.2.1.2"},
     "Alias of the interface, or its name if it has no alias."},
    {9, 8, "TimeOfLastStateChange", Kind::date, "", {"ifLastChange", "2.2.1.9"},
     "Time at which the operational status last changed."},
    {9, 7, "OperationalStatus", Kind::state, "", {"ifOperStatus", "2.2.1.8"},
     "Whether the interface carries traffic.", interfaceStatusNames},
    {9, 6, "EnabledState", Kind::state, "", {"ifAdminStatus", "2.2.1.7"},
     "Whether the administrator has enabled the interface.", enabledStateNames},
    {9, 4, "Speed", Kind::gauge, "Bits per Second", {"ifSpeed", "2.2.1.5"},
     "Nominal bandwidth of the interface."},
    {9, 3, "MaxDataSize", Kind::size, "Bytes", {"ifMtu", "2.2.1.4"},
     "Largest payload of a frame (MTU)."},
    {9, 2, "ProtocolIFType", Kind::state, "", {"ifType", "2.2.1.3"},
     "Type of the interface, a code of IANAifType; only common codes have a name here.", interfaceTypeNames},
    // 10 QAV_NetworkPortStatistics
    {10, 26, "InstanceID", Kind::key, "", {"ifName", "31.1.1.1.1"},
     "Name of the interface in the kernel.", {}, readOnly, identifying},
    {10, 9, "InOctets", Kind::counter, "Bytes", {"ifInOctets", "2.2.1.10"},
     "Bytes received, with those of the link layer."},
    {10, 10, "InUcastPkts", Kind::counter, "Packets", {"ifInUcastPkts", "2.2.1.11"},
     "Packets received that were addressed to this interface alone."},
    {10, 11, "InNUcastPkts", Kind::counter, "Packets", {"ifInNUcastPkts", "2.2.1.12"},
     "Multicast and broadcast packets received, as far as the driver counts them."},
    {10, 12, "InDiscards", Kind::counter, "Packets", {"ifInDiscards", "2.2.1.13"},
     "Intact packets received that were dropped."},
    {10, 13, "InErrors", Kind::counter, "Packets", {"ifInErrors", "2.2.1.14"},
     "Packets received with an error."},
    {10, 14, "InUnknownProtos", Kind::counter, "Packets", {"ifInUnknownProtos", "2.2.1.15"},
     "Packets received of a protocol that the host does not speak."},
    {10, 15, "OutOctets", Kind::counter, "Bytes", {"ifOutOctets", "2.2.1.16"},
     "Bytes sent, with those of the link layer."},
    {10, 16, "OutUcastPkts", Kind::counter, "Packets", {"ifOutUcastPkts", "2.2.1.17"},
     "Packets sent to one receiver; all packets sent if the host does not distinguish."},
    {10, 17, "OutNUcastPkts", Kind::counter, "Packets", {"ifOutNUcastPkts", "2.2.1.18"},
     "Multicast and broadcast packets sent."},
    {10, 18, "OutDiscards", Kind::counter, "Packets", {"ifOutDiscards", "2.2.1.19"},
     "Intact packets to send that were dropped."},
    {10, 19, "OutErrors", Kind::counter, "Packets", {"ifOutErrors", "2.2.1.20"},
     "Packets that could not be sent because of an error."},
    {10, 20, "OutQLen", Kind::gauge, "Packets", {"ifOutQLen", "2.2.1.21"},
     "Packets in the output queue."},
    // 11 QAV_ICMPStatisticalData
    {11, 0, "InMsgs", Kind::counter, "Messages", {"icmpInMsgs", "5.1"},
     "Messages received, with errors or without."},
    {11, 1, "InErrors", Kind::counter, "Messages", {"icmpInErrors", "5.2"},
     "Messages received with an error, such as a wrong checksum."},
    {11, 2, "InDestUnreachs", Kind::counter, "Messages", {"icmpInDestUnreachs", "5.3"},
     "Messages received of the type \"destination unreachable\"."},
    {11, 3, "InTimeExcds", Kind::counter, "Messages", {"icmpInTimeExcds", "5.4"},
     "Messages received of the type \"time exceeded\"."},
    {11, 4, "InParmProbs", Kind::counter, "Messages", {"icmpInParmProbs", "5.5"},
     "Messages received of the type \"parameter problem\"."},
    {11, 5, "InSrcQuenchs", Kind::counter, "Messages", {"icmpInSrcQuenchs", "5.6"},
     "Messages received of the type \"source quench\"."},
    {11, 6, "InRedirects", Kind::counter, "Messages", {"icmpInRedirects", "5.7"},
     "Messages received of the type \"redirect\"."},
    {11, 7, "InEchos", Kind::counter, "Messages", {"icmpInEchos", "5.8"},
     "Messages received of the type \"echo request\"."},
    {11, 8, "InEchoReps", Kind::counter, "Messages", {"icmpInEchoReps", "5.9"},
     "Messages received of the type \"echo reply\"."},
    {11, 9, "InTimestamps", Kind::counter, "Messages", {"icmpInTimestamps", "5.10"},
     "Messages received of the type \"timestamp request\"."},
    {11, 10, "InTimestampReps", Kind::counter, "Messages", {"icmpInTimestampReps", "5.11"},
     "Messages received of the type \"timestamp reply\"."},
    {11, 11, "InAddrMasks", Kind::counter, "Messages", {"icmpInAddrMasks", "5.12"},
     "Messages received of the type \"address mask request\"."},
    {11, 12, "InAddrMaskReps", Kind::counter, "Messages", {"icmpInAddrMaskReps", "5.13"},
     "Messages received of the type \"address mask reply\"."},
    {11, 13, "OutMsgs", Kind::counter, "Messages", {"icmpOutMsgs", "5.14"},
     "Messages that the host tried to send."},
    {11, 14, "OutErrors", Kind::counter, "Messages", {"icmpOutErrors", "5.15"},
     "Messages not sent because of a problem within ICMP."},
    {11, 15, "OutDestUnreachs", Kind::counter, "Messages", {"icmpOutDestUnreachs", "5.16"},
     "Messages sent of the type \"destination unreachable\"."},
    {11, 16, "OutTimeExcds", Kind::counter, "Messages", {"icmpOutTimeExcds", "5.17"},
     "Messages sent of the type \"time exceeded\"."},
    {11, 17, "OutParmProbs", Kind::counter, "Messages", {"icmpOutParmProbs", "5.18"},
     "Messages sent of the type \"parameter problem\"."},
    {11, 18, "OutSrcQuenchs", Kind::counter, "Messages", {"icmpOutSrcQuenchs", "5.19"},
     "Messages sent of the type \"source quench\"."},
    {11, 19, "OutRedirects", Kind::counter, "Messages", {"icmpOutRedirects", "5.20"},
     "Messages sent of the type \"redirect\"."},
    {11, 20, "OutEchos", Kind::counter, "Messages", {"icmpOutEchos", "5.21"},
     "Messages sent of the type \"echo request\"."},
    {11, 21, "OutEchoReps", Kind::counter, "Messages", {"icmpOutEchoReps", "5.22"},
     "Messages sent of the type \"echo reply\"."},
    {11, 22, "OutTimestamps", Kind::counter, "Messages", {"icmpOutTimestamps", "5.23"},
     "Messages sent of the type \"timestamp request\"."},
    {11, 23, "OutTimestampReps", Kind::counter, "Messages", {"icmpOutTimestampReps", "5.24"},
     "Messages sent of the type \"timestamp reply\"."},
    {11, 24, "OutAddrMasks", Kind::counter, "Messages", {"icmpOutAddrMasks", "5.25"},
     "Messages sent of the type \"address mask request\"."},
    {11, 25, "OutAddrMaskReps", Kind::counter, "Messages", {"icmpOutAddrMaskReps", "5.26"},
     "Messages sent of the type \"address mask reply\"."},
    // 12 QAV_IPProtocolEndpoint
    {12, 0, "Forwarding", Kind::state, "", {"ipForwarding", "4.1"},
     "Whether the host forwards datagrams as a router.", forwardingNames},
    {12, 1, "DefaultTTL", Kind::gauge, "Hops", {"ipDefaultTTL", "4.2"},
     "Time to live of datagrams that set none."},
    {12, 12, "ReassemblyTimeout", Kind::gauge, "Seconds", {"ipReasmTimeout", "4.13"},
     "Longest time for which fragments wait for the rest of their datagram."},
    // 13 QAV_IPStatisticalData
    {13, 2, "InReceives", Kind::counter, "Datagrams", {"ipInReceives", "4.3"},
     "Datagrams received, with errors or without."},
    {13, 3, "InHdrErrors", Kind::counter, "Datagrams", {"ipInHdrErrors", "4.4"},
     "Datagrams dropped because of an error in their header."},
    {13, 4, "InAddrErrors", Kind::counter, "Datagrams", {"ipInAddrErrors", "4.5"},
     "Datagrams dropped because their destination address is invalid for this host."},
    {13, 5, "InForwDatagrams", Kind::counter, "Datagrams", {"ipForwDatagrams", "4.6"},
     "Datagrams received for another host that were forwarded."},
    {13, 6, "InUnknownProtos", Kind::counter, "Datagrams", {"ipInUnknownProtos", "4.7"},
     "Datagrams dropped because the host does not speak their protocol."},
    {13, 7, "InDiscards", Kind::counter, "Datagrams", {"ipInDiscards", "4.8"},
     "Intact datagrams received that were dropped, for example for lack of memory."},
    {13, 8, "InDelivers", Kind::counter, "Datagrams", {"ipInDelivers", "4.9"},
     "Datagrams delivered to a protocol of this host."},
    {13, 9, "OutRequests", Kind::counter, "Datagrams", {"ipOutRequests", "4.10"},
     "Datagrams that protocols of this host asked to send."},
    {13, 10, "OutDiscards", Kind::counter, "Datagrams", {"ipOutDiscards", "4.11"},
     "Intact datagrams to send that were dropped, for example for lack of memory."},
    {13, 11, "OutNoRoutes", Kind::counter, "Datagrams", {"ipOutNoRoutes", "4.12"},
     "Datagrams dropped because there is no route to their destination."},
    {13, 13, "ReassemblyRequired", Kind::counter, "Fragments", {"ipReasmReqds", "4.14"},
     "Fragments received that had to be reassembled."},
    {13, 14, "ReassemblyOKs", Kind::counter, "Datagrams", {"ipReasmOKs", "4.15"},
     "Datagrams reassembled from fragments."},
    {13, 15, "ReassemblyFails", Kind::counter, "Errors", {"ipReasmFails", "4.16"},
     "Reassemblies that failed."},
    {13, 16, "FragOKs", Kind::counter, "Datagrams", {"ipFragOKs", "4.17"},
     "Datagrams that were fragmented."},
    {13, 17, "FragFails", Kind::counter, "Datagrams", {"ipFragFails", "4.18"},
     "Datagrams dropped because they may not be fragmented but are too large."},
    {13, 19, "RoutingDiscards", Kind::counter, "Entries", {"ipRoutingDiscards", "4.23"},
     "Valid routing entries that were dropped, for example for lack of memory."},
    {13, 18, "FragCreates", Kind::counter, "Fragments", {"ipFragCreates", "4.19"},
     "Fragments created."},
    // 14 QAV_UDPStatisticalData
    {14, 0, "InDatagrams", Kind::counter, "Datagrams", {"udpInDatagrams", "7.1"},
     "Datagrams delivered to a program."},
    {14, 1, "NoPorts", Kind::counter, "Datagrams", {"udpNoPorts", "7.2"},
     "Datagrams received for a port without a program."},
    {14, 2, "InErrors", Kind::counter, "Datagrams", {"udpInErrors", "7.3"},
     "Datagrams received that could not be delivered for another reason."},
    {14, 3, "OutDatagrams", Kind::counter, "Datagrams", {"udpOutDatagrams", "7.4"},
     "Datagrams sent."},
    // 15 QAV_SoftwareIdentity
    {15, 1, "Name", Kind::text, "", {"hrSWInstalledName", "25.6.3.1.2"},
     "Name and version of the package.", {}, readOnly, identifying},
    {15, 3, "Classifications", Kind::state, "", {"hrSWInstalledType", "25.6.3.1.4"},
     "Kind of software.", softwareClassificationNames},
    {15, 4, "InstalledDate", Kind::date, "", {"hrSWInstalledDate", "25.6.3.1.5"},
     "Time at which the package was installed."},
    // 16 QAV_UnixProcess
    {16, 1, "Name", Kind::text, "", {"hrSWRunName", "25.4.2.1.2"},
     "Name of the command, at most 15 bytes; up to 63 for a kernel thread.", {}, readOnly, identifying},
    {16, 2, "Handle", Kind::key, "", {"hrSWRunIndex", "25.4.2.1.1"},
     "Process ID.", {}, readOnly, identifying},
    {16, 3, "ModulePath", Kind::text, "", {"hrSWRunPath", "25.4.2.1.4"},
     "Path of the program; empty if it may not be read."},
    {16, 4, "Parameters", Kind::text, "", {"hrSWRunParameters", "25.4.2.1.5"},
     "Arguments after the name of the program."},
    {16, 5, "RunType", Kind::state, "", {"hrSWRunType", "25.4.2.1.6"},
     "Kind of program, a code of RFC 2790.", runTypeNames},
    {16, 6, "ExecutionState", Kind::state, "", {"hrSWRunStatus", "25.4.2.1.7"},
     "State of the process.", executionStateNames},
    // 22 QAV_UnixProcessStatisticalInformation
    {22, 7, "TotalCPUTime", Kind::interval, "", {"hrSWRunPerfCPU", "25.5.1.1.1"},
     "Processor time in user and system mode."},
    {22, 9, "RealText", Kind::size, "KiloBytes", {"hrSWRunPerfMem", "25.5.1.1.2"},
     "Virtual size of the program and its libraries."},
    {22, 10, "RealData", Kind::size, "KiloBytes", {"hrSWRunPerfMem", "25.5.1.1.2"},
     "Virtual size of the data."},
    {22, 11, "RealStack", Kind::size, "KiloBytes", {"hrSWRunPerfMem", "25.5.1.1.2"},
     "Virtual size of the stack."},
    {22, 12, "Handle", Kind::key, "", {"hrSWRunIndex", "25.4.2.1.1"},
     "Process ID.", {}, readOnly, identifying},
    // 18 QAV_MediaAccessDevice
    {18, 0, "Capabilities", Kind::state, "", {"hrDiskStorageAccess", "25.3.6.1.1"},
     "Capabilities of the drive, one value for each.", diskCapabilityNames},
    {18, 1, "StorageType", Kind::state, "", {"hrDiskStorageMedia", "25.3.6.1.2"},
     "Medium of the disk.", diskMediumNames},
    {18, 3, "MaxMediaSize", Kind::size, "KiloBytes", {"hrDiskStorageCapacity", "25.3.6.1.4"},
     "Capacity of the disk."},
    {18, 4, "_HR_DEVICE_INDEX", Kind::reference, "", {"hrDeviceIndex", "25.3.2.1.1"},
     "Index of the disk as a device (group 21).", {}, readOnly, identifying},
    {18, 5, "OperationalStatus", Kind::state, "", {"hrDeviceStatus", "25.3.2.1.5"},
     "Whether the disk works: 2 OK, 10 stopped.", operationalStatusNames},
    {18, 6, "Errors", Kind::counter, "Errors", {"hrDeviceErrors", "25.3.2.1.6"},
     "Requests to the disk that ended with an error."},
    // 19 QAV_DiskPartition
    {19, 0, "Index", Kind::index, "", {"hrPartitionIndex", "25.3.7.1.1"},
     "Number of the partition on its disk, from 1."},
    {19, 1, "Label", Kind::text, "", {"hrPartitionLabel", "25.3.7.1.2"},
     "Label of the file system, or the name in the partition table."},
    {19, 2, "Identity", Kind::text, "", {"hrPartitionID", "25.3.7.1.3"},
     "UUID of the partition, or of the file system."},
    {19, 3, "Size", Kind::size, "KiloBytes", {"hrPartitionSize", "25.3.7.1.4"},
     "Size of the partition."},
    {19, 5, "HR_DEVICE_INDEX", Kind::reference, "", {"hrDeviceIndex", "25.3.2.1.1"},
     "Index of the disk (group 21) that the partition is on."},
    {19, 6, "DeviceID", Kind::key, "", {},
     "Name of the partition in the kernel.", {}, readOnly, identifying},
    // 20 QAV_FileSystem
    {20, 0, "Index", Kind::index, "", {"hrFSIndex", "25.3.8.1.1"},
     "Index of the mount in the kernel."},
    {20, 1, "Root", Kind::text, "", {"hrFSMountPoint", "25.3.8.1.2"},
     "Directory that the file system is mounted on.", {}, readOnly, identifying},
    {20, 2, "RemoteMountPoint", Kind::text, "", {"hrFSRemoteMountPoint", "25.3.8.1.3"},
     "Server and path of a remote file system; empty for a local one."},
    {20, 3, "FileSystemType", Kind::text, "", {"hrFSType", "25.3.8.1.4"},
     "Type of the file system, as the kernel names it."},
    {20, 4, "ReadOnly", Kind::flag, "", {"hrFSAccess", "25.3.8.1.5"},
     "Whether the file system is mounted read-only."},
    {20, 5, "Bootable", Kind::flag, "", {"hrFSBootable", "25.3.8.1.6"},
     "Whether the host boots from the file system."},
    {20, 6, "StorageIndex", Kind::reference, "", {"hrFSStorageIndex", "25.3.8.1.7"},
     "Index of the storage (group 3) of the file system; 0 for a remote one."},
    {20, 7, "LastFullBackupDate", Kind::date, "", {"hrFSLastFullBackupDate", "25.3.8.1.8"},
     "Time of the last full backup."},
    {20, 8, "LastPartialBackupDate", Kind::date, "", {"hrFSLastPartialBackupDate", "25.3.8.1.9"},
     "Time of the last partial backup."},
    // 21 HR_DEVICE
    {21, 0, "_HR_DEVICE_INDEX", Kind::index, "", {"hrDeviceIndex", "25.3.2.1.1"},
     "Index of the device.", {}, readOnly, identifying},
    {21, 1, "_HR_DEVICE_TYPE", Kind::state, "", {"hrDeviceType", "25.3.2.1.2"},
     "Kind of device.", deviceTypeNames},
    {21, 2, "_HR_DEVICE_DESCR", Kind::text, "", {"hrDeviceDescr", "25.3.2.1.3"},
     "Description of the device, or its name."},
    {21, 3, "_HR_DEVICE_ID", Kind::text, "", {"hrDeviceID", "25.3.2.1.4"},
     "Object identifier that the vendor assigns to the product."},
    {21, 4, "_HR_DEVICE_STATUS", Kind::state, "", {"hrDeviceStatus", "25.3.2.1.5"},
     "Whether the device works.", deviceStatusNames},
    {21, 5, "_HR_DEVICE_ERRORS", Kind::counter, "Errors", {"hrDeviceErrors", "25.3.2.1.6"},
     "Errors of the device."},
    // 25 HR_NETWORK
    {25, 0, "_HR_NETWORK_INDEX", Kind::reference, "", {"hrNetworkIfIndex", "25.3.4.1.1"},
     "Index of the network interface (group 9).", {}, readOnly, identifying},
    {25, 1, "_HR_DEVICE_INDEX", Kind::reference, "", {"hrDeviceIndex", "25.3.2.1.1"},
     "Index of the interface as a device (group 21)."},
    // 23 QAV_ResidesOnPartition
    {23, 0, "Dependent", Kind::reference, "", {},
     "Path of the file system (group 20).", {}, readOnly, identifying},
    {23, 1, "Antecedent", Kind::reference, "", {},
     "Path of the partition (group 19) that it is on."},
    // 24 QAV_ResidesOnExtent
    {24, 0, "Dependent", Kind::reference, "", {},
     "Path of the file system (group 20).", {}, readOnly, identifying},
    {24, 1, "Antecedent", Kind::reference, "", {},
     "Path of the storage (group 3) that it is on."},
    // 28 QAV_XRUPackageDependency
    {28, 0, "Dependent", Kind::reference, "", {},
     "Path of the module (group 27).", {}, readOnly, identifying},
    {28, 1, "Antecedent", Kind::reference, "", {},
     "Path of the enclosure (group 0) that contains it."},
    // 29 QAV_XRULogicalModuleLocation
    {29, 0, "SameElement", Kind::reference, "", {},
     "Path of the slot (group 30)."},
    {29, 1, "SystemElement", Kind::reference, "", {},
     "Path of the module (group 27) that is in it.", {}, readOnly, identifying},
    // 30 QAV_CoreTelephony_ModuleLocation
    {30, 0, "Key", Kind::key, "", {},
     "Name of the slot, unique on the host.", {}, readOnly, identifying},
    {30, 1, "LocnXruType", Kind::text, "", {},
     "Kind of module in the slot, in words."},
}};

// clang-format on

} // namespace agent
