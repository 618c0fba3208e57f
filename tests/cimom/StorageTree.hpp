#ifndef TESTS_CIMOM_STORAGE_TREE_HPP
#define TESTS_CIMOM_STORAGE_TREE_HPP
#include "HostTree.hpp"
#include "OW_CIMInstance.hpp"

#include <string>
#include <vector>

/** A mount as /proc/self/mountinfo tells it. */
struct MountLine {
    unsigned id;
    unsigned parent;
    std::string device;
    std::string point;
    std::string type;
    std::string source;
    std::string part = "/";
    std::string options = "rw,relatime";
    std::string fileSystemOptions = "rw";

    /** With a line end. */
    std::string text() const;
};

/** The files that tell of the storage of a host. */
class StorageTree : public HostTree {
public:
    /**
     * With /proc/filesystems: ext4, btrfs, vfat and fuseblk need a block device, others are marked nodev.
     */
    StorageTree();

    void writeMounts(const std::vector<MountLine>& mounts) const;
    /** Makes a symbolic link, and the folders on its way. */
    void link(const std::string& path, const std::string& target) const;
    /** Makes a folder, and those on its way. */
    void makeFolder(const std::string& path) const;
    /** Writes a disk with hardware. @param number "<major>:<minor>" */
    void writeDisk(const std::string& name, const std::string& number, const std::string& sectors) const;
    /** Writes a file below the folder of a disk. */
    void writeDiskFile(const std::string& disk, const std::string& file, const std::string& content) const;
    void writePartition(const std::string& disk, const std::string& name, const std::string& number,
                        const std::string& ordinal, const std::string& sectors) const;
};

/** The values of a property of all instances in their order, with a blank after each. */
std::string column(const cimom::Provider& provider, const char* property);

/** The instance in which a property has a value; null when there is none. */
OpenWBEM::CIMInstance instanceWhere(const cimom::Provider& provider, const char* property,
                                    const std::string& value);

/** The instance that the object manager of a host finds at a reference; CIMException when there is none. */
OpenWBEM::CIMInstance referredTo(const HostTree& tree, const OpenWBEM::CIMInstance& association,
                                 const char* reference);

#endif
