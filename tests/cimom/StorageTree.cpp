#include "StorageTree.hpp"

#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "objects/ObjectManager.hpp"
#include "providers/Providers.hpp"

#include <filesystem>

using namespace OpenWBEM;

std::string MountLine::text() const {
    return std::to_string(id) + " " + std::to_string(parent) + " " + device + " " + part + " " + point + " " +
           options + " shared:1 - " + type + " " + source + " " + fileSystemOptions + "\n";
}

StorageTree::StorageTree() {
    write("/proc/filesystems", "nodev\tsysfs\nnodev\ttmpfs\nnodev\tproc\n\text4\n\tbtrfs\n\tvfat\n\tfuseblk\n"
                               "nodev\tfuse\nnodev\tnfs4\nnodev\toverlay\n");
}

void StorageTree::writeMounts(const std::vector<MountLine>& mounts) const {
    std::string content;
    for (const MountLine& mount : mounts)
        content += mount.text();
    write("/proc/self/mountinfo", content);
}

void StorageTree::link(const std::string& path, const std::string& target) const {
    const std::filesystem::path link = realPath(path);
    std::filesystem::create_directories(link.parent_path());
    std::filesystem::create_symlink(target, link);
}

void StorageTree::makeDirectory(const std::string& path) const {
    std::filesystem::create_directories(realPath(path));
}

void StorageTree::writeDisk(const std::string& name, const std::string& number,
                            const std::string& sectors) const {
    writeDiskFile(name, "dev", number);
    writeDiskFile(name, "size", sectors);
    makeDirectory("/sys/block/" + name + "/device");
}

void StorageTree::writeDiskFile(const std::string& disk, const std::string& file,
                                const std::string& content) const {
    write("/sys/block/" + disk + "/" + file, content + "\n");
}

void StorageTree::writePartition(const std::string& disk, const std::string& name, const std::string& number,
                                 const std::string& ordinal, const std::string& sectors) const {
    writeDiskFile(disk, name + "/dev", number);
    writeDiskFile(disk, name + "/partition", ordinal);
    writeDiskFile(disk, name + "/size", sectors);
}

std::string column(const cimom::Provider& provider, const char* property) {
    std::string values;
    for (const CIMInstance& instance : allInstances(provider))
        values += text(instance, property) + " ";
    return values;
}

CIMInstance instanceWhere(const cimom::Provider& provider, const char* property, const std::string& value) {
    for (const CIMInstance& instance : allInstances(provider)) {
        if (text(instance, property) == value)
            return instance;
    }
    return CIMInstance(CIMNULL);
}

CIMInstance referredTo(const HostTree& tree, const CIMInstance& association, const char* reference) {
    CIMObjectPath path(CIMNULL);
    association.getProperty(reference).getValue().get(path);
    const cimom::ObjectManager manager(cimom::makeProviders(tree.host(), loop()));
    return manager.getInstance("root/cimv2", path, nullptr);
}
