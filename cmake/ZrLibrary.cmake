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
target_compile_options(zr_flags INTERFACE -Wall -Wextra -Wshadow -Wconversion -ffp-contract=off)
# An author's own build must not fail for what another compiler takes exception to.
target_compile_options(zr_flags INTERFACE $<$<NOT:$<CONFIG:Release>>:-Werror>)
# g++ 12 finds overlapping copies in std::string's own operator+ where there are none (its bug 105651).
target_compile_options(zr_flags INTERFACE
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
target_link_libraries(zr_flags INTERFACE Threads::Threads)
set(ZR_SANITIZE "" CACHE STRING "Sanitizers to build with: address,undefined or thread")
if(ZR_SANITIZE)
    target_compile_options(zr_flags INTERFACE -fsanitize=${ZR_SANITIZE} -fno-omit-frame-pointer
                                              -fno-sanitize-recover=all)
    target_link_options(zr_flags INTERFACE -fsanitize=${ZR_SANITIZE})
    # What the sanitizers add looks uninitialised to g++ where nothing is.
    target_compile_options(zr_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    # What g++ defines by itself.
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang AND ZR_SANITIZE MATCHES address)
        target_compile_definitions(zr_flags INTERFACE __SANITIZE_ADDRESS__)
    endif()
endif()

# zr_install_headers(header ..): installs public headers under the path that they are included by.
function(zr_install_headers)
    foreach(header ${ARGN})
        cmake_path(ABSOLUTE_PATH header BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
        cmake_path(IS_PREFIX ZR_HOST_ROOT "${header}" is_host)
        set(root "${PROJECT_SOURCE_DIR}")
        if(is_host)
            set(root "${ZR_HOST_ROOT}")
        endif()
        cmake_path(RELATIVE_PATH header BASE_DIRECTORY "${root}" OUTPUT_VARIABLE path)
        cmake_path(GET path PARENT_PATH folder)
        install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zrcallouts/${folder}")
    endforeach()
endfunction()

# zr_library(name PUBLIC_HEADERS .. PRIVATE_HEADERS .. SOURCES .. LINKS .. PRIVATE_LINKS .. [HIDDEN])
# A shared library. Headers are included by their path from host/ or from the project's root. LINKS are
# visible to who links the library, PRIVATE_LINKS are not. HIDDEN (components) exports only what is marked.
set(ZR_HOST_ROOT "${PROJECT_SOURCE_DIR}/host")
set(ZR_COMPONENT_MAP "${PROJECT_SOURCE_DIR}/cmake/component.map")
function(zr_library name)
    cmake_parse_arguments(ARG "HIDDEN" "" "PUBLIC_HEADERS;PRIVATE_HEADERS;SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES} ${ARG_PUBLIC_HEADERS} ${ARG_PRIVATE_HEADERS})
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${ZR_HOST_ROOT}>" "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zrcallouts>")
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE $<BUILD_INTERFACE:zr_flags> ${ARG_PRIVATE_LINKS})
    if(ARG_HIDDEN)
        set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
                                                 LINK_DEPENDS "${ZR_COMPONENT_MAP}")
        target_link_options(${name} PRIVATE "LINKER:--version-script=${ZR_COMPONENT_MAP}")
    endif()
    zr_install_headers(${ARG_PUBLIC_HEADERS})
    install(TARGETS ${name} EXPORT zrcallouts LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endfunction()

# zr_app_library(name SOURCES .. LINKS ..): a part of the application, linked statically into it and its tests.
function(zr_app_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}" "${ZR_HOST_ROOT}")
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} zr_flags)
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
