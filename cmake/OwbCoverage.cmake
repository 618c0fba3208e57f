# Of the preset "coverage": what a process has counted is kept when it ends by _exit(2) too, as a child of a test does.
set(folder ${PROJECT_SOURCE_DIR}/tests/coverage)
add_library(owb_counters SHARED ${folder}/Counters.c)
add_library(owb_announcement OBJECT ${folder}/Announcement.c)
set_target_properties(owb_counters PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set_target_properties(owb_announcement PROPERTIES POSITION_INDEPENDENT_CODE ON)
unset(folder)
link_libraries(owb_counters $<TARGET_OBJECTS:owb_announcement>) # of every target below
