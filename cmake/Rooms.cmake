# One target a room. A room is a folder whose sources are all found by themselves; it exports only
# its own folder as include root, so that an include against the arrows does not build.

# add_room(<target> <kind> [HIDDEN] [LINKS <targets>] [EXPORTS <targets>])
#   kind     STATIC, OBJECT, SHARED, EXECUTABLE, or INTERFACE for headers alone
#   HIDDEN   the room ends inside the module: nothing of it is visible outside
#   LINKS    rooms and libraries that only its sources know
#   EXPORTS  those that its headers show to whoever uses the room
function(add_room target kind)
    cmake_parse_arguments(ARG "HIDDEN" "" "LINKS;EXPORTS" ${ARGN})

    if(kind STREQUAL "INTERFACE")
        add_library(${target} INTERFACE)
        target_include_directories(${target} INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}")
        target_link_libraries(${target} INTERFACE ${ARG_EXPORTS})
        return()
    endif()

    file(GLOB sources CONFIGURE_DEPENDS "*.cpp" "support/*.cpp" "catalogue/*.cpp")
    if(NOT sources)
        message(STATUS "${target}: no sources yet")
        if(NOT kind STREQUAL "EXECUTABLE")
            add_library(${target} INTERFACE)
            target_include_directories(${target} INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}")
            target_link_libraries(${target} INTERFACE ${ARG_EXPORTS})
        endif()
        return()
    endif()

    if(kind STREQUAL "EXECUTABLE")
        add_executable(${target} ${sources})
    else()
        add_library(${target} ${kind} ${sources})
    endif()
    target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${target} PUBLIC ${ARG_EXPORTS} PRIVATE ${ARG_LINKS} project_options)
    if(ARG_HIDDEN)
        set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    endif()
endfunction()

# The products land side by side in one folder.
function(place_product)
    foreach(target IN LISTS ARGN)
        if(TARGET ${target})
            get_target_property(type ${target} TYPE)
            if(NOT type STREQUAL "INTERFACE_LIBRARY")
                set_target_properties(${target} PROPERTIES
                    RUNTIME_OUTPUT_DIRECTORY "${VORNIPC_BIN_DIR}"
                    LIBRARY_OUTPUT_DIRECTORY "${VORNIPC_BIN_DIR}"
                    BUILD_RPATH "$ORIGIN")
            endif()
        endif()
    endforeach()
endfunction()

# A folder of GoogleTest cases; every case is a CTest with the label.
function(add_test_room target label)
    add_room(${target} EXECUTABLE LINKS ${ARGN} GTest::gmock_main Threads::Threads)
    if(TARGET ${target})
        gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
            PROPERTIES LABELS ${label} TIMEOUT 120)
    endif()
endfunction()
