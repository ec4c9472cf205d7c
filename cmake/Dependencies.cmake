# Third-party libraries, all from the distribution. Asio and RapidJSON bring no CMake targets;
# the header-only ones are shared with cross builds, which must never see the rest of /usr/include.

find_package(Threads REQUIRED)

# Imported targets are system includes: their headers are not held to our warnings.
function(add_header_library target header)
    cmake_parse_arguments(ARG "" "" "DEFINITIONS" ${ARGN})
    if(TARGET ${target})
        return()
    endif()
    string(MAKE_C_IDENTIFIER "${header}_INCLUDE_DIR" variable)
    find_path(${variable} "${header}" REQUIRED)
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} INTERFACE "${${variable}}")
    target_compile_definitions(${target} INTERFACE ${ARG_DEFINITIONS})
endfunction()

if(CMAKE_CROSSCOMPILING)
    set(crossHeaders "${CMAKE_BINARY_DIR}/cross-headers")
    file(MAKE_DIRECTORY "${crossHeaders}")
    foreach(entry IN ITEMS asio asio.hpp cereal rapidjson nlohmann CLI fmt)
        if(NOT EXISTS "/usr/include/${entry}")
            message(FATAL_ERROR "/usr/include/${entry} is missing: run 'make setup'")
        endif()
        file(CREATE_LINK "/usr/include/${entry}" "${crossHeaders}/${entry}" SYMBOLIC)
    endforeach()
    list(PREPEND CMAKE_INCLUDE_PATH "${crossHeaders}")
    add_header_library(fmt::fmt fmt/format.h DEFINITIONS FMT_HEADER_ONLY)
else()
    find_package(fmt CONFIG REQUIRED)
    find_package(benchmark CONFIG REQUIRED)
endif()

# Whether Asio allocates aligned depends on which header a source includes first: two sources could disagree on who frees.
# Its fences are unknown to ThreadSanitizer, which would see races where there are none; locks take their place there.
set(asioDefinitions ASIO_STANDALONE ASIO_NO_DEPRECATED ASIO_DISABLE_STD_ALIGNED_ALLOC)
if(VORNIPC_SANITIZE STREQUAL "thread")
    list(APPEND asioDefinitions ASIO_DISABLE_FENCED_BLOCK)
endif()
add_header_library(asio asio.hpp DEFINITIONS ${asioDefinitions})
target_link_libraries(asio INTERFACE Threads::Threads)
add_header_library(rapidjson rapidjson/document.h)
add_header_library(cereal::cereal cereal/cereal.hpp)
target_link_libraries(cereal::cereal INTERFACE rapidjson)
add_header_library(nlohmann_json::nlohmann_json nlohmann/json.hpp)
add_header_library(CLI11::CLI11 CLI/CLI.hpp)

if(VORNIPC_WITH_CONTROL)
    # The library is compiled with TLS and compression. Its header without the flags that pkg-config
    # knows declares classes of another size, and the program aborts.
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(HTTPLIB REQUIRED IMPORTED_TARGET GLOBAL cpp-httplib)
    add_library(httplib ALIAS PkgConfig::HTTPLIB)
endif()

if(CMAKE_CROSSCOMPILING)
    # No GoogleTest library for the target: compile it from the source package.
    add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
else()
    find_package(GTest CONFIG REQUIRED)
endif()
include(GoogleTest)
