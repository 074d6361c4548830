# GoogleTest as the distribution packages it: its sources, built with the compiler of this build. Without that
# package the program can still be built; only the tests are missing.

set(googletestSources "/usr/src/googletest" CACHE PATH "Folder with the sources of GoogleTest")
set(HOUSE_GOOGLETEST OFF)
if(EXISTS "${googletestSources}/CMakeLists.txt")
    set(HOUSE_GOOGLETEST ON)
    set(INSTALL_GTEST OFF)
    set(BUILD_GMOCK ON)
    add_subdirectory("${googletestSources}" "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
    foreach(library gtest gmock gmock_main)
        target_compile_options(${library} PRIVATE -O0)
    endforeach()
else()
    message(STATUS "GoogleTest's sources are not installed: the build has no tests")
endif()

# add_house_test(name LABEL label [SOURCES file...] [LIBS lib...] [OWN_MAIN] [DISPLAY] [DPI value...]
#                [TIMEOUT seconds] [DEPENDS target...])
#
# Adds a test program and one ctest entry for the whole of it, since starting Wine takes longer than the cases.
# It runs with the repository's root as its current folder: test data are found as tests/data/...
# OWN_MAIN: the sources bring main(); otherwise GoogleMock's is linked.
# DISPLAY: under Wine it gets an X server with a window manager; otherwise it runs without one.
# DPI: with DISPLAY, a ctest entry for each of these screen resolutions instead of one for 96.
# DEPENDS: targets that must be built for it to run, such as other programs.
function(add_house_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "OWN_MAIN;DISPLAY" "LABEL;TIMEOUT" "SOURCES;LIBS;DPI;DEPENDS")
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${name}: unexpected ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT ARG_SOURCES)
        return()
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    set_up_house_target(${name})
    # Optimised, the tests would take longer to compile than all they test.
    target_compile_options(${name} PRIVATE -O0 -fno-lto)
    if(ARG_OWN_MAIN)
        target_link_libraries(${name} PRIVATE ${ARG_LIBS} gmock)
    else()
        target_link_libraries(${name} PRIVATE ${ARG_LIBS} gmock_main)
    endif()
    if(ARG_DEPENDS)
        add_dependencies(${name} ${ARG_DEPENDS})
    endif()
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")

    if(NOT WIN32)
        add_house_test_entry(${name}.native ${name} "${ARG_LABEL}" ${ARG_TIMEOUT} "")
    elseif(NOT ARG_DISPLAY)
        add_house_test_entry(${name}.windows ${name} "${ARG_LABEL}" ${ARG_TIMEOUT} "TAMARIND_WINE=headless")
    elseif(NOT ARG_DPI)
        add_house_test_entry(${name}.windows ${name} "${ARG_LABEL}" ${ARG_TIMEOUT}
            "TAMARIND_WINE=display;TAMARIND_DPI=96")
    else()
        foreach(dpi IN LISTS ARG_DPI)
            add_house_test_entry(${name}.windows.dpi${dpi} ${name} "${ARG_LABEL}" ${ARG_TIMEOUT}
                "TAMARIND_WINE=display;TAMARIND_DPI=${dpi}")
        endforeach()
    endif()
endfunction()

function(add_house_test_entry test program label timeout environment)
    add_test(NAME ${test} COMMAND ${program} WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
    set_tests_properties(${test} PROPERTIES
        LABELS "${label}" TIMEOUT ${timeout} ENVIRONMENT "${environment}")
    if(environment MATCHES "display.*DPI=([0-9]+)")
        # Two desktops at once in one Wine prefix get in each other's way.
        set_tests_properties(${test} PROPERTIES RESOURCE_LOCK wine_desktop_${CMAKE_MATCH_1})
    endif()
endfunction()

# The checks of the sources' form.
function(add_house_style_checks)
    add_test(NAME format COMMAND "${CMAKE_SOURCE_DIR}/tools/check_format.sh")
    add_test(NAME tidy COMMAND nice "${CMAKE_SOURCE_DIR}/tools/check_tidy.sh")
    add_test(NAME floors COMMAND python3 tools/check_floors.py)
    set_tests_properties(floors format tidy PROPERTIES LABELS style TIMEOUT 900
        WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
    # The longest one comes first, so that nothing waits for it at the end.
    set_tests_properties(tidy PROPERTIES COST 1000 TIMEOUT 1800)
endfunction()

# The checks of what is written for users: the data files against their source and against the facts about all keys,
# the help, the program's texts in all languages, and the tools that make them.
function(add_house_content_checks)
    set(dataFiles python3 tools/make_data_files.py)
    add_test(NAME data_files.present COMMAND ${dataFiles} verify)
    add_test(NAME data_files.complete COMMAND ${dataFiles} coverage
        tests/data/facts/wincmd_configuration_keys.tsv tests/data/facts/wincmd_other_keys.tsv
        tests/data/facts/wcx_ftp_keys.tsv --corpus tests/data/corpus)
    add_test(NAME data_files.types COMMAND ${dataFiles} types tests/data/corpus)
    add_test(NAME help COMMAND python3 tools/check_help.py help --program .)
    add_test(NAME texts COMMAND python3 tools/check_texts.py)
    add_test(NAME tools COMMAND python3 -m unittest discover -s tests/tools -p "*_test.py")
    set_tests_properties(data_files.present data_files.complete data_files.types help texts tools PROPERTIES
        LABELS content TIMEOUT 120 WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
endfunction()

# The check of what the program asks of Windows: it needs no Wine.
function(add_house_program_checks)
    add_test(NAME imports COMMAND python3 tools/check_imports.py "$<TARGET_FILE:TamarindEditor>")
    set_tests_properties(imports PROPERTIES LABELS content TIMEOUT 60 WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
endfunction()
