# What every target of the project shares: warnings, link style, and how a test is declared.

option(KX_LIBFUZZER "build the fuzz targets with libFuzzer (clang)" OFF)

# Paths are cached and compiled in as seen from the checkout, so that a second checkout hits the cache of the first
# and no binary names the folder that it was built in.
find_program(KX_CCACHE ccache)
if(KX_CCACHE)
    set(launcher env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1 "${KX_CCACHE}")
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()
add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")

# Real recordings are no part of the repository: they are taken from KX_RECORDS, else from a folder
# "records" in the checkout or in one of its neighbours. Tests that read them exist only where they are.
set(KX_RECORDS "$ENV{KX_RECORDS}" CACHE PATH "folder that holds the recordings (ludb, ptb, ptbxl, chapman)")
if(NOT KX_RECORDS)
    file(GLOB candidates "${PROJECT_SOURCE_DIR}/records" "${PROJECT_SOURCE_DIR}/../records"
         "${PROJECT_SOURCE_DIR}/../*/records")
    foreach(candidate IN LISTS candidates)
        if(EXISTS "${candidate}/ludb")
            get_filename_component(KX_RECORDS "${candidate}" ABSOLUTE)
            break()
        endif()
    endforeach()
endif()
if(KX_RECORDS)
    message(STATUS "recordings: ${KX_RECORDS}")
else()
    message(STATUS "recordings: none found, the tests on real recordings are not built (set KX_RECORDS)")
endif()

# kx_target(NAME): the project's warnings, headers by their path from the root, no import but the system's.
function(kx_target name)
    target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/include")
    if(WIN32)
        target_compile_definitions(${name} PRIVATE WIN32_LEAN_AND_MEAN NOMINMAX WINVER=0x0601
                                   _WIN32_WINNT=0x0601 _WIN32_IE=0x0700)
        # SSE arithmetic, so that a double is a double here as it is in the native tests.
        target_compile_options(${name} PRIVATE -msse2 -mfpmath=sse -mstackrealign)
        # A function checks the end of its stack frame: a text that is longer than its buffer ends the program instead of
        # going where the text says.
        target_compile_options(${name} PRIVATE -fstack-protector-strong)
        target_link_options(${name} PUBLIC -fstack-protector-strong)
        # No time of the build in the binary; no table of handlers to be overwritten, because nothing here registers one.
        target_link_options(${name} PRIVATE -static -Wl,--no-insert-timestamp -Wl,--no-seh -Wl,--gc-sections)
    endif()
endfunction()

# kx_source_package(NAME RESULT): sets RESULT to the folder of the distribution's source package NAME, which ./kx setup
# unpacks outside the checkout (source_package in tools/setup.sh).
function(kx_source_package name result)
    set(cache "$ENV{KX_CACHE}")
    if(NOT cache)
        set(cache "$ENV{XDG_CACHE_HOME}")
        if(NOT cache)
            set(cache "$ENV{HOME}/.cache")
        endif()
        set(cache "${cache}/kxdialogs")
    endif()
    set(folder "${cache}/sources/${name}")
    if(NOT IS_DIRECTORY "${folder}")
        message(FATAL_ERROR "the source of ${name} is not there (${folder}): run ./kx setup")
    endif()
    set(${result} "${folder}" PARENT_SCOPE)
endfunction()

# kx_suite_module(NAME SOURCES...): NAME.dll of the suite in bin/. SOURCES hold its .cpp, its NAME.rc with the version
# record (see lib/version_record.rch) and its NAME.def, whose names are the exports, undecorated.
function(kx_suite_module name)
    add_library(${name} SHARED ${ARGN})
    kx_target(${name})
    set_target_properties(${name} PROPERTIES PREFIX "" IMPORT_PREFIX "")
    # The .def names a stdcall function without its count of argument bytes.
    target_link_options(${name} PRIVATE -Wl,--enable-stdcall-fixup -Wl,--kill-at)
endfunction()

# kx_test_program(NAME SOURCES...): a GoogleTest program. What it links besides is the caller's to say. KX_TEST_HEADERS names
# the target whose compiled headers it shares.
set(KX_TEST_HEADERS kxtest)
function(kx_test_program name)
    add_executable(${name} ${ARGN})
    kx_target(${name})
    kx_test_code(${name})
    target_link_libraries(${name} PRIVATE kxtest)
    target_precompile_headers(${name} REUSE_FROM ${KX_TEST_HEADERS})
    target_compile_definitions(${name} PRIVATE KX_RECORDS_DIR="${KX_RECORDS}" KX_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    # Apart from the product's own binaries, so that a test may lay a module of its own beside itself.
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/test-bin")
endfunction()

# kx_test(NAME SOURCES...): such a program as a test, run once as a whole; its cases are counted from the XML it writes.
function(kx_test name)
    kx_test_program(${name} ${ARGN})
    # The results' path is relative: a Windows program does not take one without a drive for absolute.
    add_test(NAME ${name}
             COMMAND ${name} --gtest_brief=1 --gtest_output=xml:results/${name}.xml
             WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
    set_tests_properties(${name} PROPERTIES TIMEOUT 900)
endfunction()

# kx_test_code(NAME): code that is compiled more often than it runs long: neither optimised nor described to a debugger, nor
# watched for undefined arithmetic of its own (what it calls is).
function(kx_test_code name)
    target_compile_options(${name} PRIVATE -O0 -g0 -fno-sanitize=undefined)
endfunction()
