# Cross toolchain for the 32-bit Windows module, its test host and tests.
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/MingwToolchain.cmake)
