# The product's version, kept in one place: the number is the project's
# (project(... VERSION ...)), the release name is the one the About text has
# always shown. Both reach the code and the resource scripts through the
# generated QuorvexVersion.h, and the manual and the download through
# PROJECT_VERSION.
set(QUORVEX_RELEASE_NAME "CS Release 1 (9/2003)")
configure_file(${CMAKE_CURRENT_LIST_DIR}/QuorvexVersion.h.in
               ${PROJECT_BINARY_DIR}/generated/QuorvexVersion.h @ONLY)
include_directories(${PROJECT_BINARY_DIR}/generated)
