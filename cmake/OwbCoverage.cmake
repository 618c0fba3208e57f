# Counts the lines that run, for gcov. A process keeps its counts when it ends by _exit(2) too, as a child of a test does:
# owb_counters interposes _exit(), and every program and library has a copy of owb_announcement.
set(sources ${PROJECT_SOURCE_DIR}/tests/coverage)
add_library(owb_counters SHARED ${sources}/Counters.c)
add_library(owb_announcement OBJECT ${sources}/Announcement.c)
unset(sources)

target_compile_options(owb_flags INTERFACE --coverage -fprofile-update=atomic)
target_link_options(owb_flags INTERFACE --coverage)
target_link_libraries(owb_flags INTERFACE owb_counters $<TARGET_OBJECTS:owb_announcement>)
