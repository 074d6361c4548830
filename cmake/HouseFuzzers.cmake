# add_house_fuzzer(name [SOURCES file...] [LIBS lib...] [CORPUS folder...] [SECONDS n])
#
# Adds a libFuzzer program and a ctest entry that runs it for a while (20 seconds unless told otherwise), starting
# from the files in CORPUS. New inputs go to the build folder and are kept there, so that later runs go on from them;
# an input that fails is stored there too. The schedule by entropy is off: it takes longer than most inputs here.
function(add_house_fuzzer name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "SECONDS" "SOURCES;LIBS;CORPUS")
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${name}: unexpected ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT ARG_SOURCES)
        return()
    endif()
    if(NOT ARG_SECONDS)
        set(ARG_SECONDS 20)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    set_up_house_target(${name})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")

    set(found "${CMAKE_BINARY_DIR}/corpus/${name}")
    file(MAKE_DIRECTORY "${found}")
    add_test(NAME ${name}
        COMMAND nice "$<TARGET_FILE:${name}>" -max_total_time=${ARG_SECONDS} -timeout=10 -verbosity=0 -print_final_stats=1
            -entropic=0 "-artifact_prefix=${found}-" "${found}" ${ARG_CORPUS}
        WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
    math(EXPR limit "${ARG_SECONDS} + 60")
    set_tests_properties(${name} PROPERTIES LABELS "fuzz" TIMEOUT ${limit})
endfunction()
