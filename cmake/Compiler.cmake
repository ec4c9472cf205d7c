# How our own code is compiled: warnings are errors, in every build and for both compilers.
# Third-party sources (GoogleTest in cross builds) stay outside: only rooms link `project_options`.

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Debug CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    # Relative paths in the cache's keys: what one clone has compiled, the next one need not.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1 "${CCACHE_PROGRAM}")
endif()

add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE
    -Werror -Wall -Wextra -Wpedantic
    -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion
    -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wcast-qual
    -Wextra-semi -Wformat=2 -Wundef -Wunused)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(project_options INTERFACE
        -Wduplicated-cond -Wlogical-op -Wmissing-declarations)
    # -Wuseless-cast stays off: a cast that one word size needs is useless to the other.
    # Unique symbols would keep the module loaded for ever: dlclose never unloads a library that has one.
    add_compile_options(-fno-gnu-unique)
endif()
