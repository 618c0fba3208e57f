# The packages that cpack makes: Debian packages and a tarball. They hold the bundled libraries: the package of a library
# that was found on the build machine is unknown. Packages that are made twice from one revision are the same files.

# The project has no address and no home page of its own, so the packages name who made this revision, and no home page.
owb_last_commit(author "%an <%ae>")
set(OWB_MAINTAINER "" CACHE STRING "Maintainer of the packages, as NAME <ADDRESS>; empty: the author of the last commit")
set(maintainer "${OWB_MAINTAINER}")
if(NOT maintainer)
    set(maintainer "${author}")
endif()
set(CPACK_PACKAGE_CONTACT "${maintainer}")

# The time of all files in the packages, and of their changelog.
set(ENV{SOURCE_DATE_EPOCH} ${OWB_EPOCH})
string(TIMESTAMP changelog_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(CPACK_OWB_EPOCH ${OWB_EPOCH})

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # it would precede each description below
set(CPACK_SYSTEM_NAME linux-${OWB_DEBIAN_ARCHITECTURE})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library development documents exporter snmp tools) # for Debian; the tarball holds all files
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${OWB_DEBIAN_ARCHITECTURE})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# Debian's tools cannot find the packages of 32-bit libraries on an amd64 host. So this lists the packages that ours depend
# on, with the versions that introduced the symbols in use; a test compares them.
set(libc "libc6 (>= 2.34)")
set(libgcc 3.0)
if(OWB_DEBIAN_ARCHITECTURE STREQUAL "armhf") # unwinds the stack with functions that libgcc introduced later
    set(libgcc 3.5)
endif()
set(libstdcxx "libgcc-s1 (>= ${libgcc}), libstdc++6 (>= 11)")
set(zlib "zlib1g (>= 1:1.1.4)")
set(tls "")
if(OWB_HAS_TLS)
    set(tls ", libssl3 (>= 3.0.0) | libssl3t64") # the name on armhf from Debian 13 on; the functions in use have no time_t
endif()
set(passwords "")
if(OWB_CRYPT_LINKS)
    set(passwords ", libcrypt1 (>= 1:4.3.0)")
endif()
set(same_version "libowb${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
set(sysusers "systemd | systemd-standalone-sysusers | systemd-sysusers")
set(tmpfiles "systemd | systemd-standalone-tmpfiles | systemd-tmpfiles")

set(control ${PROJECT_SOURCE_DIR}/packaging/debian)
set(generated ${PROJECT_BINARY_DIR}/packaging/debian)
configure_file(${control}/changelog.in ${generated}/changelog @ONLY)
configure_file(${control}/shlibs.in ${generated}/shlibs @ONLY)

# owb_service_scripts(COMPONENT UNIT INSTALL_STEP PURGE_STEP) makes the maintainer scripts of a package with a service.
function(owb_service_scripts component unit install_step purge_step)
    set(scripts "")
    foreach(script IN ITEMS postinst prerm postrm)
        configure_file(${control}/${script}.in ${generated}/${unit}/${script} @ONLY)
        list(APPEND scripts ${generated}/${unit}/${script})
    endforeach()
    set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA ${scripts} ${ARGN} PARENT_SCOPE)
endfunction()

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libowb${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "${libc}, ${libstdcxx}, ${zlib}${tls}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${control}/triggers ${generated}/shlibs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "bridge between a management agent and a CIM object manager
The library lets a systems-management agent read and write the data of a CIM
object manager as numbered items, in groups, rows and nominators.
.
It is a 32-bit library. Its client library is included, in a separate
directory.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libowb-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_version}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "owb-doc, owb-tools")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "bridge between an agent and a CIM object manager - development files
Headers, files for linker, pkg-config and CMake, and an example for agents
that use libowb.")

set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_NAME owb-doc)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTS_DESCRIPTION "bridge between an agent and a CIM object manager - documents
Description of the groups and nominators, glossary, protocols, security,
troubleshooting and figures of the library libowb, the object manager
owbcimomd and the command line owbctl.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME owb-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
    "${same_version}, ${libc}, ${libstdcxx}${tls}${passwords}, ${sysusers}")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS owb-doc)
owb_service_scripts(TOOLS owbcimomd "" "[ \"$1\" != purge ] || rm -rf \"$DPKG_ROOT/var/lib/owb\"")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "CIM object manager with the data of this host, and a command line
The object manager owbcimomd serves this host's live data to CIM clients,
on a Unix-domain socket and over TCP. The command line owbctl reads and
writes the data of an object manager through libowb. The program
owbcimom-passwd keeps the passwords of clients on the network.")

set(CPACK_DEBIAN_EXPORTER_PACKAGE_NAME owb-exporter)
set(CPACK_DEBIAN_EXPORTER_PACKAGE_SECTION net)
set(CPACK_DEBIAN_EXPORTER_PACKAGE_DEPENDS "${same_version}, ${libc}, ${libstdcxx}, ${zlib}${tls}, ${sysusers}")
set(CPACK_DEBIAN_EXPORTER_PACKAGE_SUGGESTS "owb-doc, owb-tools, prometheus")
owb_service_scripts(EXPORTER owb-exporter "" "")
set(CPACK_DEBIAN_EXPORTER_DESCRIPTION "metrics of a CIM object manager for Prometheus
The program owb-exporter serves the data of a CIM object manager over HTTP,
as metrics that Prometheus and its like read, through libowb.")

set(CPACK_DEBIAN_SNMP_PACKAGE_NAME owb-snmp)
set(CPACK_DEBIAN_SNMP_PACKAGE_SECTION net)
set(CPACK_DEBIAN_SNMP_PACKAGE_DEPENDS "${same_version}, ${libc}, ${libstdcxx}, ${sysusers}, ${tmpfiles}")
set(CPACK_DEBIAN_SNMP_PACKAGE_RECOMMENDS snmpd)
set(CPACK_DEBIAN_SNMP_PACKAGE_SUGGESTS "owb-doc, owb-tools, snmp")
# snmpd is not restarted: other subagents and managers may be using it.
owb_service_scripts(SNMP owb-agentx "systemd-tmpfiles --root=\"\${DPKG_ROOT:-/}\" --create owb-agentx.conf" "" ${control}/conffiles)
set(CPACK_DEBIAN_SNMP_DESCRIPTION "SNMP subagent with the data of a CIM object manager
The program owb-agentx serves the data of a CIM object manager as standard
MIB objects, through libowb. It is a subagent of snmpd, which answers
the managers (AgentX, RFC 2741). The package lets it connect to snmpd, and
local users read what it serves.")

set(CPACK_OWB_DEBIAN_FILES ${control} ${generated})
set(CPACK_PRE_BUILD_SCRIPTS ${control}/finish.cmake)
include(CPack)
