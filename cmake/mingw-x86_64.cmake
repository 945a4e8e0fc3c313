# Cross toolchain for the 64-bit Windows module, its test host and tests.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/MingwToolchain.cmake)
