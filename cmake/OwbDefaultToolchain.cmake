# The toolchain of the presets for 32 bits: a 32-bit host compiles for itself, any other one for 32-bit x86.
execute_process(COMMAND getconf LONG_BIT OUTPUT_VARIABLE bits OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT bits EQUAL 32)
    include(${CMAKE_CURRENT_LIST_DIR}/toolchains/i386-linux-gnu.cmake)
endif()
