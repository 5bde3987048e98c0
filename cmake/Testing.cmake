# korv_test(GROUP/SUBJECT COMMAND... [NEEDS...] [ENVIRONMENT...] [PROPERTIES...]): a CTest test. It
# needs these targets: script/test builds no others.
# korv_unit_test(SUBJECT_test SOURCES... LIBS... [RUN_BY...]): a GoogleTest program; RUN_BY is a
# command that runs it.
# korv_pytest(GROUP FILE [ON_ALL_PROCESSORS] [NEEDS...] [ENVIRONMENT...] [PROPERTIES...]): a pytest
# file; none in a build without the device, which needs the compiler alone. It runs on one
# processor unless it is about what happens at the same moment. What Python compiles is kept in the
# build directory; pytest's plugins, of which a machine may have any, are not loaded.
# korv_repeats(BUILD GROUP/SUBJECT...): tests of this folder that decide in all builds what they decide in
# this one, "release" or "sanitize". In the others they are labelled "repeats": script/test by itself
# leaves them out.
#
# A test is named BUILD/GROUP/SUBJECT. The build's name comes first, so that one CTest run can cover
# several build trees. script/test runs three at a time for each processor, since most wait most of
# the time: a test that computes says PROCESSORS 3. Those with the greatest COST begin first, so that
# no long one is left to run alone at the end.
find_package(GTest REQUIRED)
set(KORV_LOCALES ${PROJECT_BINARY_DIR}/locales CACHE PATH "Where the tests' locales are made")
if(KORV_DEVICE)
  find_program(KORV_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)  # has Debian's modules
endif()
get_filename_component(KORV_BUILD_NAME ${PROJECT_BINARY_DIR} NAME)

set(KORV_TEST_ENVIRONMENT
    "LSAN_OPTIONS=suppressions='${PROJECT_SOURCE_DIR}/tests/lsan.supp':print_suppressions=0"
    "UBSAN_OPTIONS=print_stacktrace=1")

function(korv_repeats build)
  if(KORV_DEVICE AND NOT KORV_BUILD_NAME STREQUAL build)
    foreach(name ${ARGN})
      set_property(TEST ${KORV_BUILD_NAME}/${name} APPEND PROPERTY LABELS repeats)
    endforeach()
  endif()
endfunction()

function(korv_test name)
  cmake_parse_arguments(arg "" "" "COMMAND;NEEDS;ENVIRONMENT;PROPERTIES" ${ARGN})
  set(test ${KORV_BUILD_NAME}/${name})
  add_test(NAME ${test} COMMAND ${arg_COMMAND})
  set_tests_properties(${test} PROPERTIES
    TIMEOUT 1200 LABELS "${arg_NEEDS}"
    ENVIRONMENT "${KORV_TEST_ENVIRONMENT};${arg_ENVIRONMENT}" ${arg_PROPERTIES})
endfunction()

# The tests' own code is compiled for a quick build; what they test is compiled as it ships. The
# sanitizers watch over the memory that tests hand to it, but not over the tests' own arithmetic; they
# alone name lines of it. The last two are what Qt and GTK ask for: a precompiled header fits only where
# all of them are the same.
add_library(test_flags INTERFACE)
target_compile_options(test_flags INTERFACE
  -O0 -g$<BOOL:${KORV_SANITIZE}> -U_FORTIFY_SOURCE
  $<$<BOOL:${KORV_SANITIZE}>:-fno-sanitize=undefined> -fPIC -pthread)
target_include_directories(test_flags INTERFACE ${PROJECT_SOURCE_DIR})

add_library(precompiled OBJECT EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/tests/support/precompiled.cpp)
target_link_libraries(precompiled PRIVATE test_flags GTest::gmock)
target_precompile_headers(precompiled PRIVATE <gmock/gmock.h>)

function(korv_unit_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS;RUN_BY" ${ARGN})
  add_executable(${name} ${arg_SOURCES}
    $<$<BOOL:${KORV_COVERAGE}>:${PROJECT_SOURCE_DIR}/tests/coverage/write_counters_of_children.cpp>)
  target_link_libraries(${name} PRIVATE test_flags GTest::gmock GTest::gtest_main ${arg_LIBS})
  if(NOT KORV_COVERAGE)  # which compiles some sources with flags of their own
    target_precompile_headers(${name} REUSE_FROM precompiled)
  endif()
  string(REGEX REPLACE "_test$" "" subject ${name})
  korv_test(unit/${subject} NEEDS ${name}
            COMMAND ${arg_RUN_BY} $<TARGET_FILE:${name}> --gtest_brief=1)
endfunction()

# What a test needs that runs the program on the device.
set(KORV_DEVICE_TARGETS korv-agent-mgr regmux icon translations test_locales)

function(korv_pytest group file)
  if(NOT KORV_DEVICE)
    return()
  endif()
  string(REGEX REPLACE "_test\\.py$" "" subject ${file})
  cmake_parse_arguments(arg "ON_ALL_PROCESSORS" "" "NEEDS;ENVIRONMENT;PROPERTIES" ${ARGN})
  if(group MATCHES "^(app|device|package|script|window)$")  # the others take a moment
    list(PREPEND arg_PROPERTIES COST 100)
  endif()
  if(NOT arg_ON_ALL_PROCESSORS)
    list(APPEND arg_PROPERTIES RESOURCE_GROUPS processors:1)
  endif()
  if(group MATCHES "^(device|package|window)$")
    list(APPEND arg_NEEDS ${KORV_DEVICE_TARGETS})
  endif()
  korv_test(${group}/${subject} NEEDS ${arg_NEEDS}
            COMMAND ${PROJECT_SOURCE_DIR}/tests/support/on_one_processor
                    ${KORV_PYTHON} -m pytest -q -p no:cacheprovider --durations=3
                    ${CMAKE_CURRENT_SOURCE_DIR}/${file}
            ENVIRONMENT KORV_BUILD_DIR=${PROJECT_BINARY_DIR} KORV_LOCALES=${KORV_LOCALES}
                        PYTHONDONTWRITEBYTECODE= PYTHONPYCACHEPREFIX=${PROJECT_BINARY_DIR}/pycache
                        PYTEST_DISABLE_PLUGIN_AUTOLOAD=1 ${arg_ENVIRONMENT}
            PROPERTIES ${arg_PROPERTIES})
endfunction()
