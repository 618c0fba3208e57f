# owb_last_commit(VARIABLE FORMAT) sets the variable as git formats the last commit, or to "" in sources without history.
function(owb_last_commit variable format)
    set(output "")
    if(EXISTS ${PROJECT_SOURCE_DIR}/.git) # not the history of a project around this one
        # Root may make packages in the directory of a user.
        execute_process(COMMAND git -c safe.directory=* -C ${PROJECT_SOURCE_DIR} log -1 --format=${format}
                        OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
    set(${variable} "${output}" PARENT_SCOPE)
endfunction()

# The time of this revision, in seconds from 1970.
set(OWB_EPOCH "$ENV{SOURCE_DATE_EPOCH}")
if(NOT OWB_EPOCH)
    owb_last_commit(OWB_EPOCH %ct)
endif()
if(NOT OWB_EPOCH)
    file(TIMESTAMP ${PROJECT_SOURCE_DIR}/CHANGELOG.md OWB_EPOCH %s UTC)
endif()
