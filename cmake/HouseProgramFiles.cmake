# The files that belong beside the program: every folder named here that exists is copied to bin/ when one of its
# files has changed.
set(copiedStamps)
foreach(folder IN ITEMS "Data Files" "Languages")
    file(GLOB_RECURSE files CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/${folder}/*")
    if(files)
        string(REPLACE " " "_" stampName "${folder}")
        set(stamp "${CMAKE_BINARY_DIR}/generated/${stampName}.copied")
        add_custom_command(
            OUTPUT "${stamp}"
            COMMAND "${CMAKE_COMMAND}" -E copy_directory
                "${CMAKE_SOURCE_DIR}/${folder}" "${CMAKE_BINARY_DIR}/bin/${folder}"
            COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
            DEPENDS ${files}
            COMMENT "Copying ${folder}"
            VERBATIM
        )
        list(APPEND copiedStamps "${stamp}")
    endif()
endforeach()

# The help: compiled, and as pages for a browser.
file(GLOB helpSources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/help/*")
set(helpStamp "${CMAKE_BINARY_DIR}/generated/help.made")
add_custom_command(
    OUTPUT "${helpStamp}"
    COMMAND "${CMAKE_SOURCE_DIR}/tools/make_help.sh" "${CMAKE_BINARY_DIR}/bin"
    COMMAND "${CMAKE_COMMAND}" -E touch "${helpStamp}"
    DEPENDS "${CMAKE_SOURCE_DIR}/tools/make_help.sh" "${CMAKE_SOURCE_DIR}/tools/check_help.py" ${helpSources}
    COMMENT "Compiling the help"
    VERBATIM
)
add_custom_target(program_files ALL DEPENDS ${copiedStamps} "${helpStamp}")
