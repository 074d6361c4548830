# Compiler and linker options. Those set here for the whole folder also reach the libraries of others
# that are built from source; house_options holds what only our own code is compiled with.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

if(WIN32)
    # One file without other DLLs, and the same bytes from the same sources wherever they are built.
    add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=")
    add_compile_options(-ffunction-sections -fdata-sections)
    add_link_options(-static $<$<CONFIG:Release>:-s> -Wl,--gc-sections -Wl,--no-insert-timestamp -fno-lto)
elseif(HOUSE_PURPOSE STREQUAL "tests")
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)
    add_compile_options(${sanitizers} -fno-omit-frame-pointer)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    add_link_options(${sanitizers})
elseif(HOUSE_PURPOSE STREQUAL "fuzz")
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)
    add_compile_options(${sanitizers} -fsanitize=fuzzer-no-link -fno-omit-frame-pointer)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    add_link_options(${sanitizers})
endif()

add_library(house_options INTERFACE)
target_compile_features(house_options INTERFACE cxx_std_20)
target_include_directories(house_options INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_options(house_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wconversion -Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # Clang counts changes of sign as -Wconversion, GCC does not: the same code is to pass both.
    target_compile_options(house_options INTERFACE -Wno-sign-conversion)
endif()
if(WIN32)
    # The program is optimised across all files when it is linked, which makes it a fifth smaller; tests and
    # floor checks are linked from the same objects without that, which takes them less time.
    target_compile_options(house_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-flto> $<$<COMPILE_LANGUAGE:CXX>:-ffat-lto-objects>)
    target_compile_definitions(house_options INTERFACE
        UNICODE _UNICODE NOMINMAX WINVER=0x0A00 _WIN32_WINNT=0x0A00)
endif()
