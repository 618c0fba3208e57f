#ifndef TESTS_CIMOM_STORAGE_TREE_HPP
#define TESTS_CIMOM_STORAGE_TREE_HPP
#include "HostTree.hpp"
#include "OW_CIMInstance.hpp"

#include <string>
#include <vector>

/** A line of /proc/self/mountinfo. */
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

/** The storage of a fake host. */
class StorageTree : public HostTree {
public:
    /** With /proc/filesystems: ext4, btrfs, vfat and fuseblk need a block device, others are marked "nodev".
     */
    StorageTree();

    void writeMounts(const std::vector<MountLine>& mounts) const;
    /** Creates a symbolic link and its parent directories. */
    void link(const std::string& path, const std::string& target) const;
    /** Creates a directory and its parents. */
    void makeDirectory(const std::string& path) const;
    /** Writes a disk with hardware. @param number "<major>:<minor>" */
    void writeDisk(const std::string& name, const std::string& number, const std::string& sectors) const;
    /** Writes a file below the directory of a disk. */
    void writeDiskFile(const std::string& disk, const std::string& file, const std::string& content) const;
    void writePartition(const std::string& disk, const std::string& name, const std::string& number,
                        const std::string& ordinal, const std::string& sectors) const;
};

/** The values of a property of all instances in order, with a blank after each. */
std::string column(const cimom::Provider& provider, const char* property);

/** The first instance in which a property has a value; null if there is none. */
OpenWBEM::CIMInstance instanceWhere(const cimom::Provider& provider, const char* property,
                                    const std::string& value);

/** The instance to which a reference of an association leads. Throws CIMException if there is none. */
OpenWBEM::CIMInstance referredTo(const HostTree& tree, const OpenWBEM::CIMInstance& association,
                                 const char* reference);

#endif
