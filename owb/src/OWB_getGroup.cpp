/* The connection, the group read, the running software, and the tables of classes, properties and keys. */
#include "QAV_UnixProcessAPI.hpp" /* first: it includes what OW_Array.hpp needs before it */

#include "OW_CIMClient.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_ClientAuthCBIFC.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"

#include "owb.h"

#include "OWB_enumerate.hpp"
#include "OWB_queue.hpp"
#include "OWB_trace.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace OpenWBEM;

extern "C" {

char* owbUrl_p = NULL;

/* clang-format off */

const char* const ExtGroupCimClass[32] = {
    "QAV_K70Chassis",                            /* 0 */
    "QAV_System",                                /* 1 */
    "QAV_System",                                /* 2 */
    "QAV_StorageExtent",                         /* 3 */
    "QAV_OperatingSystem",                       /* 4 */
    "QAV_TCPProtocolEndpoint",                   /* 5 */
    "QAV_TCPStatisticalData",                    /* 6 */
    "QAV_TCPProtocolEndpoint",                   /* 7 */
    "QAV_LANEndpointNetworkPortAssociation",     /* 8 */
    "QAV_LANEndpoint",                           /* 9 */
    "QAV_NetworkPortStatistics",                 /* 10 */
    "QAV_ICMPStatisticalData",                   /* 11 */
    "QAV_IPProtocolEndpoint",                    /* 12 */
    "QAV_IPStatisticalData",                     /* 13 */
    "QAV_UDPStatisticalData",                    /* 14 */
    "QAV_SoftwareIdentity",                      /* 15 */
    "QAV_UnixProcess",                           /* 16 */
    "QAV_OperatingSystem",                       /* 17 */
    "QAV_MediaAccessDevice",                     /* 18 */
    "QAV_DiskPartition",                         /* 19 */
    "QAV_FileSystem",                            /* 20 */
    "HR_DEVICE",                                 /* 21 */
    "QAV_UnixProcessStatisticalInformation",     /* 22 */
    "QAV_ResidesOnPartition",                    /* 23 */
    "QAV_ResidesOnExtent",                       /* 24 */
    "HR_NETWORK",                                /* 25 */
    "QAV_K70ExpansionChassis",                   /* 26 */
    "QAV_XRULogicalModule",                      /* 27 */
    "QAV_XRUPackageDependency",                  /* 28 */
    "QAV_XRULogicalModuleLocation",              /* 29 */
    "QAV_CoreTelephony_ModuleLocation",          /* 30 */
    "INVALID",                                   /* 31 */
};

const ExtItem ExtItemList[217] = {
    /* QAV_K70Chassis */
    {0, 1, "Model"}, {0, 2, "VendorEquipmentType"}, {0, 6, "ElementName"}, {0, 7, "Version"},
    {0, 10, "SerialNumber"}, {0, 11, "Manufacturer"}, {0, 12, "PartNumber"},
    {0, 13, "OtherIdentifyingInfo"}, {0, 14, "UserTracking"}, {0, 15, "CanBeFRUed"}, {0, 4, "PhysicalType"},
    {0, 16, "Location"}, {0, 0, "_INDEX"}, {0, 19, "_CONTAINED_IN"}, {0, 20, "PresentStatus"},
    /* QAV_K70ExpansionChassis */
    {26, 2, "VendorEquipmentType"}, {26, 6, "ElementName"}, {26, 7, "Version"}, {26, 10, "SerialNumber"},
    {26, 11, "Manufacturer"}, {26, 12, "PartNumber"}, {26, 13, "OtherIdentifyingInfo"},
    {26, 14, "UserTracking"}, {26, 15, "CanBeFRUed"}, {26, 4, "PhysicalType"}, {26, 0, "_INDEX"},
    {26, 17, "Tag"}, {26, 20, "PresentStatus"},
    /* QAV_XRULogicalModule */
    {27, 2, "VendorEquipmentType"}, {27, 7, "Version"}, {27, 10, "SerialNumber"}, {27, 11, "Manufacturer"},
    {27, 12, "PartNumber"}, {27, 13, "OtherIdentifyingInfo"}, {27, 14, "UserTracking"},
    {27, 15, "CanBeFRUed"}, {27, 4, "PhysicalType"}, {27, 0, "_INDEX"}, {27, 18, "DeviceID"},
    {27, 19, "_CONTAINED_IN"}, {27, 20, "PresentStatus"},
    /* QAV_StorageExtent */
    {3, 1, "StorageType"}, {3, 2, "Purpose"}, {3, 3, "Blocksize"}, {3, 4, "NumberOfBlocks"},
    {3, 5, "StorageUsed"}, {3, 6, "AllocationFailures"}, {3, 7, "DeviceID"}, {3, 8, "_INDEX"},
    /* QAV_OperatingSystem */
    {17, 0, "LastBootUpTime"}, {17, 1, "LocalDateTime"},
    /* QAV_OperatingSystem */
    {4, 0, "LastBootUpTime"}, {4, 1, "LocalDateTime"}, {4, 2, "_INIT_LOAD_DEVICE"},
    {4, 3, "_INIT_LOAD_PARAMETERS"}, {4, 4, "NumberOfUsers"}, {4, 5, "NumberOfProcesses"},
    {4, 6, "MaxNumberOfProcesses"},
    /* QAV_System */
    {1, 0, "LastChangeTime"},
    /* QAV_System */
    {2, 4, "SystemName"}, {2, 3, "PrimaryOwnerContact"}, {2, 5, "InstalledLocation"}, {2, 6, "SysServices"},
    {2, 1, "SNMPObjectID"}, {2, 0, "Description"}, {2, 8, "SystemVersion"},
    /* QAV_TCPStatisticalData */
    {6, 4, "ActiveOpens"}, {6, 5, "PassiveOpens"}, {6, 6, "AttemptFails"}, {6, 7, "EstabResets"},
    {6, 8, "CurrEstab"}, {6, 9, "InSegs"}, {6, 10, "OutSegs"}, {6, 11, "RetransSegs"}, {6, 12, "InErrs"},
    {6, 13, "OutRsts"},
    /* QAV_TCPProtocolEndpoint */
    {5, 0, "TimeoutAlgorithm"}, {5, 1, "TimeoutMin"}, {5, 2, "TimeoutMax"}, {5, 3, "MaxConnections"},
    /* QAV_TCPProtocolEndpoint */
    {7, 0, "ConnectionState"}, {7, 1, "LocalAddress"}, {7, 2, "LocalPort"}, {7, 3, "RemoteAddress"},
    {7, 4, "RemotePort"},
    /* QAV_LANEndpointNetworkPortAssociation */
    {8, 0, "Dependent"}, {8, 1, "Antecedent"},
    /* QAV_LANEndpoint */
    {9, 23, "SystemCreationClassName"}, {9, 22, "SystemName"}, {9, 25, "CreationClassName"},
    {9, 24, "Name"}, {9, 27, "_INDEX"}, {9, 5, "MACAddress"}, {9, 1, "Description"},
    {9, 8, "TimeOfLastStateChange"}, {9, 7, "OperationalStatus"}, {9, 6, "EnabledState"}, {9, 4, "Speed"},
    {9, 3, "MaxDataSize"}, {9, 2, "ProtocolIFType"},
    /* QAV_NetworkPortStatistics */
    {10, 26, "InstanceID"}, {10, 9, "InOctets"}, {10, 10, "InUcastPkts"}, {10, 11, "InNUcastPkts"},
    {10, 12, "InDiscards"}, {10, 13, "InErrors"}, {10, 14, "InUnknownProtos"}, {10, 15, "OutOctets"},
    {10, 16, "OutUcastPkts"}, {10, 17, "OutNUcastPkts"}, {10, 18, "OutDiscards"}, {10, 19, "OutErrors"},
    {10, 20, "OutQLen"},
    /* QAV_ICMPStatisticalData */
    {11, 0, "InMsgs"}, {11, 1, "InErrors"}, {11, 2, "InDestUnreachs"}, {11, 3, "InTimeExcds"},
    {11, 4, "InParmProbs"}, {11, 5, "InSrcQuenchs"}, {11, 6, "InRedirects"}, {11, 7, "InEchos"},
    {11, 8, "InEchoReps"}, {11, 9, "InTimestamps"}, {11, 10, "InTimestampReps"}, {11, 11, "InAddrMasks"},
    {11, 12, "InAddrMaskReps"}, {11, 13, "OutMsgs"}, {11, 14, "OutErrors"}, {11, 15, "OutDestUnreachs"},
    {11, 16, "OutTimeExcds"}, {11, 17, "OutParmProbs"}, {11, 18, "OutSrcQuenchs"}, {11, 19, "OutRedirects"},
    {11, 20, "OutEchos"}, {11, 21, "OutEchoReps"}, {11, 22, "OutTimestamps"}, {11, 23, "OutTimestampReps"},
    {11, 24, "OutAddrMasks"}, {11, 25, "OutAddrMaskReps"},
    /* QAV_IPProtocolEndpoint */
    {12, 0, "Forwarding"}, {12, 1, "DefaultTTL"}, {12, 12, "ReassemblyTimeout"},
    /* QAV_IPStatisticalData */
    {13, 2, "InReceives"}, {13, 3, "InHdrErrors"}, {13, 4, "InAddrErrors"}, {13, 5, "InForwDatagrams"},
    {13, 6, "InUnknownProtos"}, {13, 7, "InDiscards"}, {13, 8, "InDelivers"}, {13, 9, "OutRequests"},
    {13, 10, "OutDiscards"}, {13, 11, "OutNoRoutes"}, {13, 13, "ReassemblyRequired"},
    {13, 14, "ReassemblyOKs"}, {13, 15, "ReassemblyFails"}, {13, 16, "FragOKs"}, {13, 17, "FragFails"},
    {13, 19, "RoutingDiscards"}, {13, 18, "FragCreates"},
    /* QAV_UDPStatisticalData */
    {14, 0, "InDatagrams"}, {14, 1, "NoPorts"}, {14, 2, "InErrors"}, {14, 3, "OutDatagrams"},
    /* QAV_SoftwareIdentity */
    {15, 1, "Name"}, {15, 3, "Classifications"}, {15, 4, "InstalledDate"},
    /* QAV_UnixProcess */
    {16, 1, "Name"}, {16, 2, "Handle"}, {16, 3, "ModulePath"}, {16, 4, "Parameters"}, {16, 5, "RunType"},
    {16, 6, "ExecutionState"},
    /* QAV_UnixProcessStatisticalInformation */
    {22, 7, "TotalCPUTime"}, {22, 9, "RealText"}, {22, 10, "RealData"}, {22, 11, "RealStack"},
    {22, 12, "Handle"},
    /* QAV_MediaAccessDevice */
    {18, 0, "Capabilities"}, {18, 1, "StorageType"}, {18, 3, "MaxMediaSize"}, {18, 4, "_HR_DEVICE_INDEX"},
    {18, 5, "OperationalStatus"}, {18, 6, "Errors"},
    /* QAV_DiskPartition */
    {19, 0, "Index"}, {19, 1, "Label"}, {19, 2, "Identity"}, {19, 3, "Size"}, {19, 5, "HR_DEVICE_INDEX"},
    {19, 6, "DeviceID"},
    /* QAV_FileSystem */
    {20, 0, "Index"}, {20, 1, "Root"}, {20, 2, "RemoteMountPoint"}, {20, 3, "FileSystemType"},
    {20, 4, "ReadOnly"}, {20, 5, "Bootable"}, {20, 6, "StorageIndex"}, {20, 7, "LastFullBackupDate"},
    {20, 8, "LastPartialBackupDate"},
    /* HR_DEVICE */
    {21, 0, "_HR_DEVICE_INDEX"}, {21, 1, "_HR_DEVICE_TYPE"}, {21, 2, "_HR_DEVICE_DESCR"},
    {21, 3, "_HR_DEVICE_ID"}, {21, 4, "_HR_DEVICE_STATUS"}, {21, 5, "_HR_DEVICE_ERRORS"},
    /* HR_NETWORK */
    {25, 0, "_HR_NETWORK_INDEX"}, {25, 1, "_HR_DEVICE_INDEX"},
    /* QAV_ResidesOnPartition */
    {23, 0, "Dependent"}, {23, 1, "Antecedent"},
    /* QAV_ResidesOnExtent */
    {24, 0, "Dependent"}, {24, 1, "Antecedent"},
    /* QAV_XRUPackageDependency */
    {28, 0, "Dependent"}, {28, 1, "Antecedent"},
    /* QAV_XRULogicalModuleLocation */
    {29, 0, "SameElement"}, {29, 1, "SystemElement"},
    /* QAV_CoreTelephony_ModuleLocation */
    {30, 0, "Key"}, {30, 1, "LocnXruType"},
    /* end */
    {-1, -1, ""},
};

const ExtCimKey ExtCimKeyArray[8][3] = {
    {{"Tag", ""}, {"CreationClassName", ""}, {NULL, NULL}},  /* 0 */
    {{"", ""}, {"", ""}, {NULL, NULL}},                      /* 1 */
    {{"Name", ""}, {"CreationClassName", ""}, {NULL, NULL}}, /* 2 */
    {{"", ""}, {"", ""}, {NULL, NULL}},                      /* 3 */
    {{"", ""}, {"", ""}, {NULL, NULL}},                      /* 4 */
    {{"", ""}, {"", ""}, {NULL, NULL}},                      /* 5 */
    {{"", ""}, {"", ""}, {NULL, NULL}},                      /* 6 */
    {{"", ""}, {"", ""}, {NULL, NULL}},                      /* 7 */
};

/* clang-format on */

} /* extern "C" */

namespace {

const char traceFile[] = "../../owb/src/OWB_getGroup.cpp";
const char defaultUrl[] = "owbinary.wbem://localhost:%2ftmp%2fOpenWBEM_UDS";
const char cimNameSpace[] = "/root/cimv2";

const char* currentUrl() {
    return owbUrl_p ? owbUrl_p : defaultUrl;
}

} // namespace

extern "C" long OWB_URLSet(const char* url) {
    if (!url)
        return 1;
    const bool isOwn = owbUrl_p && url >= owbUrl_p && url <= owbUrl_p + std::strlen(owbUrl_p);
    if (isOwn) {
        std::memmove(owbUrl_p, url, std::strlen(url) + 1);
    } else {
        std::free(owbUrl_p);
        owbUrl_p = strdup(url);
    }
    OWB_TRACE("OWB_URLSet", 149, "Set URL: '%s'\n", currentUrl());
    return 1;
}

extern "C" const char* OWB_URLGet(void) {
    return currentUrl();
}

CIMClient* OWB_connect(unsigned char kill) {
    static CIMClient* owbCIMClient_p = NULL;
    if (kill && owbCIMClient_p) {
        OWB_TRACE_TEXT("OWB_connect", 190, "kill\n");
        delete owbCIMClient_p;
        owbCIMClient_p = NULL;
    }
    if (owbCIMClient_p) {
        OWB_TRACE_TEXT("OWB_connect", 211, "use existing connection\n");
        return owbCIMClient_p;
    }
    OWB_TRACE("OWB_connect", 206, "new connection, URL: %s namespace: %s\n", currentUrl(), cimNameSpace);
    owbCIMClient_p = new CIMClient(currentUrl(), cimNameSpace, ClientAuthCBIFCRef());
    return owbCIMClient_p;
}

/* The library fills the buffers and never reads them: a core dump or a debugger shows the build in them. */
extern "C" const char* OWB_version(char* date, char* time) {
    static char dateStr[128];
    static char timeStr[128];
    if (date)
        std::sprintf(dateStr, "%s", __DATE__);
    if (time)
        std::sprintf(timeStr, "%s", __TIME__);
    return "v1.12";
}

namespace {

/* Appends all instances of a class, numbered from 0. */
void readInstances(CIMClient& client, long group, const char* className, _qHead* q) {
    CIMInstanceEnumeration instances = owbEnumerate(client, className);
    const OwbRequest request(q, group);
    CIMInstance instance;
    for (long row = 0; instances.hasMoreElements(); ++row) {
        instances.nextElement(instance);
        const int error = OWB_getInstanceData(group, instance, row, q);
        if (error != 0)
            OWB_TRACE("OWB_getGroup", 279, "ERROR: OWB_getInstanceData returned error: %d\n", error);
    }
}

} // namespace

extern "C" long OWB_getGroup(long group, _qHead* q) {
    if (static_cast<unsigned long>(group) > OWB_MAX_GROUP || !q)
        return OWB_BAD_ARGUMENT;
    const char* const className = ExtGroupCimClass[group];
    OWB_TRACE("OWB_getGroup", 250, "className: '%s' q_p->size: %ld\n", className, q->size);
    try {
        CIMClient* const client = OWB_connect(0);
        if (!client) {
            OWB_TRACE_TEXT("OWB_getGroup", 263, "no client connection\n");
            return OWB_NO_CONNECTION;
        }
        readInstances(*client, group, className, q);
    } catch (const Exception& e) {
        OWB_TRACE_EXCEPTION("OWB_getGroup", 287, "ERROR", e);
        return OWB_EXCEPTION;
    }
    return OWB_DONE;
}

namespace {

/* QAV_UnixProcess */
void addInformation(const QAV_UnixProcessAPI& process, const OwbRow& items) {
    String text;
    Array<String> parameters;
    unsigned short code = 0;

    process.getName(text);
    items.add(1, 0, text);
    process.getHandle(text);
    items.add(2, 0, text);
    process.getModulePath(text);
    items.add(3, 0, text);
    process.getParameters(parameters);
    const Array<String>& elements = parameters; /* operator[] of a non-const Array copies shared elements */
    for (size_t i = 0; i < elements.size(); ++i)
        items.add(4, static_cast<long>(i), elements[i]);
    process.getRunType(code);
    items.add(5, 0, code);
    process.getExecutionState(code);
    items.add(6, 0, code);
}

/* QAV_UnixProcessStatisticalInformation */
void addStatistics(const QAV_UnixProcessAPI& process, const OwbRow& items) {
    String handle;
    CIMDateTime time;
    unsigned long long kilobytes = 0;

    process.getHandle(handle);
    items.add(12, 0, handle);
    process.getRealStack(kilobytes);
    items.add(11, 0, kilobytes);
    process.getRealData(kilobytes);
    items.add(10, 0, kilobytes);
    process.getRealText(kilobytes);
    items.add(9, 0, kilobytes);
    process.getTotalCpuTime(time);
    items.add(7, 0, time.toString());
}

typedef void (*AddProcess)(const QAV_UnixProcessAPI& process, const OwbRow& items);

/* Appends the items of all processes, as rows from `row` on. Returns the row after the last. */
long addProcesses(QAV_UnixProcessAPI& processes, QAV_UnixProcessAPI::tProcessInfoType type, AddProcess add,
                  long group, long row, _qHead* q) {
    const OwbRequest request(q, group);
    processes.init(type);
    processes.begin();
    for (; processes.hasNext(); ++row) {
        processes.next();
        add(processes, OwbRow(q, group, row));
    }
    processes.end();
    return row;
}

} // namespace

extern "C" int OWB_getSWRun(_qHead* q) {
    QAV_UnixProcessAPI processes;
    /* Group 22 continues the row numbers of group 16; only the handle identifies a process in both. */
    const long next =
        addProcesses(processes, QAV_UnixProcessAPI::eProcessInformation, addInformation, 16, 0, q);
    addProcesses(processes, QAV_UnixProcessAPI::eStatisticalInformation, addStatistics, 22, next, q);
    return 1;
}
