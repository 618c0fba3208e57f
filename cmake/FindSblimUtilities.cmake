# Finds an installed libSblimUtilities that links for the target architecture and has the functions we call. Our own
# header, below SblimUtilities_HEADERS, declares them: an installed library may come without one.
#
# SblimUtilities_ROOT may name its prefix. Sets SblimUtilities_FOUND, SblimUtilities_LIBRARY and, for a message when
# nothing was found, SblimUtilities_LOOKED_FOR. Defines the target SblimUtilities_installed.
include(OwbFind)
owb_describe_search(SblimUtilities "libSblimUtilities with runcommand() and freeresultbuf()")

find_library(SblimUtilities_LIBRARY NAMES SblimUtilities libSblimUtilities.so.0)
mark_as_advanced(SblimUtilities_LIBRARY)

owb_links(SblimUtilities_LINKS "${SblimUtilities_LIBRARY}" "
    #include <sblim_utilities.h>
    int main() {
        char** lines;
        const int status = runcommand(\"true\", nullptr, &lines, nullptr);
        freeresultbuf(lines);
        return status;
    }" INCLUDES ${SblimUtilities_HEADERS})

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(SblimUtilities REQUIRED_VARS SblimUtilities_LIBRARY SblimUtilities_LINKS)

owb_forget_failure(SblimUtilities_FOUND SblimUtilities_LIBRARY SblimUtilities_LINKS)

if(SblimUtilities_FOUND AND NOT TARGET SblimUtilities_installed)
    add_library(SblimUtilities_installed INTERFACE)
    target_include_directories(SblimUtilities_installed INTERFACE ${SblimUtilities_HEADERS})
    target_link_libraries(SblimUtilities_installed INTERFACE ${SblimUtilities_LIBRARY})
endif()
