# Everything that is linked into a program as a Windows resource: the version, manifest, icons and pictures of
# app/app.rc, and the dialogs of the ui folders. The program and the tests of the windows link the same object
# library, house_resources.

set(HOUSE_GENERATED_DIR "${CMAKE_BINARY_DIR}/generated")
set(HOUSE_PICTURES_DIR "${CMAKE_BINARY_DIR}/pictures")

configure_file(app/Version.h.in "${HOUSE_GENERATED_DIR}/app/Version.h" @ONLY)
add_library(house_version INTERFACE)
target_include_directories(house_version INTERFACE "${HOUSE_GENERATED_DIR}")

# The system's own Python, which the packages of the system belong to, also where another is first on the PATH.
find_program(SYSTEM_PYTHON python3 HINTS /usr/bin REQUIRED)
set(pictureScript "${CMAKE_SOURCE_DIR}/tools/render_pictures.py")
file(GLOB_RECURSE pictureSources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/art/*")
set(pictures
    "${HOUSE_PICTURES_DIR}/pictures.rc"
    "${HOUSE_PICTURES_DIR}/tamarind.ico"
    "${HOUSE_PICTURES_DIR}/datafile.ico"
)
add_custom_command(
    OUTPUT ${pictures}
    COMMAND "${SYSTEM_PYTHON}" "${pictureScript}" "${CMAKE_SOURCE_DIR}/art" "${HOUSE_PICTURES_DIR}"
    DEPENDS "${pictureScript}" ${pictureSources}
    COMMENT "Rendering the pictures"
    VERBATIM
)

add_library(house_resources OBJECT app/app.rc)
target_link_libraries(house_resources PRIVATE house_version)
target_include_directories(house_resources PRIVATE "${CMAKE_SOURCE_DIR}" "${HOUSE_PICTURES_DIR}")
set_source_files_properties(app/app.rc PROPERTIES OBJECT_DEPENDS
    "${CMAKE_SOURCE_DIR}/app/app.manifest;${HOUSE_GENERATED_DIR}/app/Version.h;${pictures}")

# add_house_resources(file.rc...): adds resource scripts of the calling folder to house_resources. They are
# compiled anew when a header of that folder changes.
function(add_house_resources)
    file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    foreach(script IN LISTS ARGN)
        set(path "${CMAKE_CURRENT_SOURCE_DIR}/${script}")
        target_sources(house_resources PRIVATE "${path}")
        set_property(SOURCE "${path}" TARGET_DIRECTORY house_resources PROPERTY OBJECT_DEPENDS ${headers})
    endforeach()
endfunction()
