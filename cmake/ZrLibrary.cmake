# The project's targets: every flag and every include root is set here and nowhere else.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN")

find_package(Threads REQUIRED)
find_program(ZR_CCACHE ccache)
if(ZR_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${ZR_CCACHE}")
endif()

add_library(zr_flags INTERFACE)
target_compile_options(zr_flags INTERFACE -Wall -Wextra -Wshadow -Wconversion -Werror -ffp-contract=off)
target_link_libraries(zr_flags INTERFACE Threads::Threads)
set(ZR_SANITIZE "" CACHE STRING "Sanitizers to build with: address,undefined or thread")
if(ZR_SANITIZE)
    target_compile_options(zr_flags INTERFACE -fsanitize=${ZR_SANITIZE} -fno-omit-frame-pointer
                                              -fno-sanitize-recover=all)
    target_link_options(zr_flags INTERFACE -fsanitize=${ZR_SANITIZE})
endif()

# zr_library(name PUBLIC_HEADERS .. PRIVATE_HEADERS .. SOURCES .. LINKS .. PRIVATE_LINKS .. [HIDDEN])
# A shared library. Headers are included by their path from host/ or from the project's root. LINKS are
# visible to who links the library, PRIVATE_LINKS are not. HIDDEN exports only what is marked.
function(zr_library name)
    cmake_parse_arguments(ARG "HIDDEN" "" "PUBLIC_HEADERS;PRIVATE_HEADERS;SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES} ${ARG_PRIVATE_HEADERS})
    target_sources(${name} PUBLIC FILE_SET public_headers TYPE HEADERS
        BASE_DIRS "${PROJECT_SOURCE_DIR}/host" "${PROJECT_SOURCE_DIR}/callouts/.." FILES ${ARG_PUBLIC_HEADERS})
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/host>" "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zrcallouts>")
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE $<BUILD_INTERFACE:zr_flags> ${ARG_PRIVATE_LINKS})
    if(ARG_HIDDEN)
        set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    endif()
endfunction()

# zr_test(name SOURCES .. LINKS .. LABELS ..): a GoogleTest program whose cases CTest lists one by one.
function(zr_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/host")
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} zr_flags GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT 120)
endfunction()

# zr_bench(name SOURCES .. LINKS ..): a Google Benchmark program.
function(zr_bench name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/host")
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} zr_flags benchmark::benchmark_main)
endfunction()
