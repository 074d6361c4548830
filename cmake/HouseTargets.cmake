if(WIN32)
    # Built by the test run: every library linked whole against the floors below it and nothing else.
    # An ordinary program would hide a call to a floor above, since it links all of them.
    add_custom_target(floor_checks)
    set(emptySource "${CMAKE_BINARY_DIR}/generated/empty.cpp")
    if(NOT EXISTS "${emptySource}")
        file(WRITE "${emptySource}" "")
    endif()
endif()

# Settings that all targets with our own sources share.
function(set_up_house_target name)
    set_target_properties(${name} PROPERTIES CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
    target_link_libraries(${name} PRIVATE house_options)
endfunction()

# What runs as fast as the user's hands is built for size; the few loops over all bytes or keys are not: the sources
# that a library lists as FAST_SOURCES. These take small functions of headers in while they are compiled: the linker
# might choose the same ones of another source, which are built for size, and takes those in less often. The 32-bit
# program, whose tables for exceptions are larger, is for size as a whole.
function(build_for_size name)
    if(WIN32)
        target_compile_options(${name} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-Os>)
    endif()
endfunction()

# add_house_library(name [SMALL] [SOURCES file...] [FAST_SOURCES file...] [WIN32_SOURCES file...] [POSIX_SOURCES file...] [LIBS lib...])
#
# Adds one floor or a part of it. LIBS are the libraries below it. Without sources it is an empty
# library that only passes LIBS on.
function(add_house_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "SMALL" "" "SOURCES;FAST_SOURCES;WIN32_SOURCES;POSIX_SOURCES;LIBS")
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${name}: unexpected ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    set(sources ${ARG_SOURCES} ${ARG_FAST_SOURCES})
    if(WIN32)
        list(APPEND sources ${ARG_WIN32_SOURCES})
    else()
        list(APPEND sources ${ARG_POSIX_SOURCES})
    endif()
    if(NOT sources)
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE ${ARG_LIBS})
        return()
    endif()

    add_library(${name} STATIC ${sources})
    set_up_house_target(${name})
    if(ARG_SMALL)
        build_for_size(${name})
        if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 8)
            set_source_files_properties(${ARG_FAST_SOURCES} PROPERTIES COMPILE_OPTIONS "-O2;--param=early-inlining-insns=24")
        endif()
    endif()
    # A program may link one of its own in place of such an object, as plain_search_tests does.
    set_source_files_properties(${ARG_FAST_SOURCES} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    target_link_libraries(${name} PUBLIC ${ARG_LIBS})
    if(WIN32)
        add_library(${name}_floor MODULE EXCLUDE_FROM_ALL "${emptySource}")
        target_link_libraries(${name}_floor PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,${name}>")
        # A section that is thrown away may refer to anything, so none is thrown away here.
        target_link_options(${name}_floor PRIVATE -Wl,--no-gc-sections -Wl,--exclude-all-symbols)
        set_target_properties(${name}_floor PROPERTIES
            LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/floor_checks")
        add_dependencies(floor_checks ${name}_floor)
    endif()
endfunction()

# add_house_program(name [GUI] OUTPUT_DIRECTORY folder [SOURCES file...] [LIBS lib...])
#
# Adds a program in a folder below the build folder. Without sources there is no such target.
function(add_house_program name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "GUI" "OUTPUT_DIRECTORY" "SOURCES;LIBS")
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${name}: unexpected ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT ARG_SOURCES)
        return()
    endif()
    add_executable(${name} ${ARG_SOURCES})
    set_up_house_target(${name})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS})
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${ARG_OUTPUT_DIRECTORY}")
    if(WIN32)
        # wmain and wWinMain: arguments come as UTF-16.
        target_link_options(${name} PRIVATE -municode)
        if(ARG_GUI)
            set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
        endif()
    endif()
endfunction()
