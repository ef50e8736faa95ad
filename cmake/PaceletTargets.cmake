# What every target of ours has in common.

find_package(Threads REQUIRED)
find_package(fmt REQUIRED)
find_package(simdjson REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(plist REQUIRED IMPORTED_TARGET libplist-2.0)

add_library(pacelet_options INTERFACE)
target_compile_options(pacelet_options INTERFACE
  -Wall -Wextra -Wno-missing-field-initializers -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlaps in plain concatenations of strings that are not there, and searches past the end
  # of views; in precompiled headers it no more knows the library's code from ours.
  target_compile_options(pacelet_options INTERFACE -Wno-restrict -Wno-stringop-overread)
  if(CMAKE_UNITY_BUILD)
    # It takes every file of a batch for a header, and warns of what one must not do.
    target_compile_options(pacelet_options INTERFACE -Wno-subobject-linkage)
  endif()
  if(PACELET_SANITIZE)
    # With the checks of the sanitizers in the way, it takes empty optionals for uninitialised ones.
    target_compile_options(pacelet_options INTERFACE -Wno-maybe-uninitialized)
  endif()
  if(PACELET_SANITIZE MATCHES "thread")
    # A fence in Qt's headers is one that the sanitizer does not follow.
    target_compile_options(pacelet_options INTERFACE -Wno-tsan)
  endif()
endif()
if(APPLE)
  # Its library has stop tokens, in headers alone, but calls them an experiment.
  target_compile_definitions(pacelet_options INTERFACE _LIBCPP_ENABLE_EXPERIMENTAL)
endif()
target_include_directories(pacelet_options INTERFACE ${PROJECT_SOURCE_DIR})

if(PACELET_SANITIZE)
  add_compile_options(-fsanitize=${PACELET_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${PACELET_SANITIZE})
endif()

if(PACELET_FUZZ)
  # Coverage feedback in every library; the fuzzers alone link the driver.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# pacelet_library(NAME FOLDERS folders...) makes a static library of all sources in these folders
# below the present one ("." for the present one itself). A folder is compiled in one piece: names in
# its unnamed namespaces are told apart.
function(pacelet_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS" ${ARGN})
  add_library(${name} STATIC)
  target_link_libraries(${name} PUBLIC pacelet_options)
  pacelet_sources(${name} ${ARG_FOLDERS})
endfunction()

# pacelet_sources(TARGET folders...) adds the sources of folders to a target.
function(pacelet_sources target)
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
  foreach(folder ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS
      ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h)
    target_sources(${target} PRIVATE ${sources})
    set_source_files_properties(${sources} PROPERTIES UNITY_GROUP "${target}_${folder}")
  endforeach()
endfunction()

# pacelet_precompile(TARGET headers...): where folders are compiled in one piece, what all of them read is
# read once for the target: the standard library's and these headers. Single files, which are for work on
# one of them, do without, and so have to include what they use.
function(pacelet_precompile target)
  if(NOT CMAKE_UNITY_BUILD)
    return()
  endif()
  set(headers algorithm array chrono cstdint filesystem functional memory optional span string
    string_view unordered_map utility vector fmt/format.h ${ARGN})
  list(TRANSFORM headers REPLACE "(.+)" "$<$<COMPILE_LANGUAGE:CXX>:<\\1$<ANGLE-R>>")
  target_precompile_headers(${target} PRIVATE ${headers})
endfunction()

# pacelet_test(NAME LABEL label SOURCES files... LIBRARIES libraries...)
function(pacelet_test name)
  cmake_parse_arguments(ARG "" "LABEL" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE pacelet_options ${ARG_LIBRARIES} GTest::gmock_main)
  # The code under test is optimised as released; the tests themselves had rather compile fast.
  target_compile_options(${name} PRIVATE -O1)
  target_compile_definitions(${name} PRIVATE
    PACELET_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
    PACELET_FIXTURES="${PROJECT_SOURCE_DIR}/tests/fixtures"
    PACELET_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES LABELS ${ARG_LABEL})
  # All tests of a label: tests-core, tests-host, …
  if(NOT TARGET tests-${ARG_LABEL})
    add_custom_target(tests-${ARG_LABEL})
  endif()
  add_dependencies(tests-${ARG_LABEL} ${name})
endfunction()
