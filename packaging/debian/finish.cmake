# cpack runs this before it makes the packages. Adds copyright, changelog and lintian overrides to the Debian packages:
# CPACK_OWB_DEBIAN_FILES lists the directories of these files. Moves settings to /etc. Sets the time of all files to
# CPACK_OWB_EPOCH, which cpack also writes into the archives.
function(compress files)
    execute_process(COMMAND gzip -9n ${files} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The page that a link names is compressed, too.
function(relink link)
    file(READ_SYMLINK ${link} page)
    file(CREATE_LINK ${page}.gz ${link}.gz SYMBOLIC)
    file(REMOVE ${link})
endfunction()

function(set_times)
    execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date=@${CPACK_OWB_EPOCH} {} +
                    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(ENV{SOURCE_DATE_EPOCH} ${CPACK_OWB_EPOCH})
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    set_times()
    return()
endif()
if(NOT CPACK_PACKAGE_CONTACT)
    message(FATAL_ERROR "the packages have no maintainer: set OWB_MAINTAINER to NAME <ADDRESS>")
endif()

set(readable OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ) # whatever the umask of the checkout
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    set(tree ${CPACK_TEMPORARY_DIRECTORY}/${component})
    set(share ${tree}/usr/share)
    if(EXISTS ${tree}/usr/etc)
        file(RENAME ${tree}/usr/etc ${tree}/etc)
    endif()
    if(EXISTS ${share}/doc/owb)
        file(RENAME ${share}/doc/owb ${share}/doc/${package})
    endif()
    list(GET CPACK_OWB_DEBIAN_FILES 0 control)
    list(GET CPACK_OWB_DEBIAN_FILES 1 generated)
    file(COPY ${control}/copyright ${generated}/changelog DESTINATION ${share}/doc/${package}
         FILE_PERMISSIONS ${readable})
    file(GLOB_RECURSE pages ${share}/man/*)
    foreach(page IN LISTS pages)
        if(IS_SYMLINK ${page})
            relink(${page})
            list(REMOVE_ITEM pages ${page})
        endif()
    endforeach()
    compress("${share}/doc/${package}/changelog;${pages}")
    if(EXISTS ${control}/${package}.lintian-overrides)
        file(COPY ${control}/${package}.lintian-overrides DESTINATION ${share}/lintian/overrides
             FILE_PERMISSIONS ${readable})
        file(RENAME ${share}/lintian/overrides/${package}.lintian-overrides ${share}/lintian/overrides/${package})
    endif()
endforeach()
set_times()
