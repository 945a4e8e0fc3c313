# quorvex_wine_test(<name> SOURCES <files...> [LIBS <targets...>])
# A GoogleTest program for the Windows side. ctest runs each test in its own
# Wine process; tests are listed when ctest starts, inside the display session.
# The module's path is passed in as a Windows path (Wine maps / to Z:).
# Each build has its own Wine: the 32-bit loader for the 32-bit build, wine64
# for the 64-bit one; the scripts read which from the file wine-arch.
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(QUORVEX_WIN_ARCH win64)
    set(QUORVEX_BITS 64)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${PROJECT_SOURCE_DIR}/scripts/wine64/wine)
else()
    set(QUORVEX_WIN_ARCH win32)
    set(QUORVEX_BITS 32)
    set(CMAKE_CROSSCOMPILING_EMULATOR wine)
endif()
file(WRITE "${CMAKE_BINARY_DIR}/wine-arch" "${QUORVEX_WIN_ARCH}\n")
string(REPLACE "/" "\\\\" QUORVEX_MODULE_WINPATH "Z:${CMAKE_BINARY_DIR}/plugin/Korvanthe.8bf")
string(REPLACE "/" "\\\\" QUORVEX_ARTIFACT_WINDIR "Z:${CMAKE_BINARY_DIR}/artifacts")
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/artifacts")

function(quorvex_wine_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE
        QUORVEX_MODULE_PATH="${QUORVEX_MODULE_WINPATH}"
        QUORVEX_ARTIFACT_DIR="${QUORVEX_ARTIFACT_WINDIR}")
    if(TARGET Korvanthe)
        add_dependencies(${name} Korvanthe)
    endif()
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 120
        WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
        PROPERTIES TIMEOUT 120)
endfunction()
