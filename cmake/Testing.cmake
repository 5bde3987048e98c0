# korv_unit_test(NAME SOURCES... LIBS...): a GoogleTest program, one CTest test.
# korv_window_test(FILE): a pytest file that drives the real program, one CTest test.
#
# Test names begin with the build's name, so that one CTest run can cover several build trees.
find_package(GTest REQUIRED)
find_program(KORV_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)  # has pyatspi
get_filename_component(KORV_BUILD_NAME ${PROJECT_BINARY_DIR} NAME)

set(KORV_TEST_ENVIRONMENT
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
    "UBSAN_OPTIONS=print_stacktrace=1")

function(korv_unit_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${arg_SOURCES}
    $<$<BOOL:${KORV_COVERAGE}>:${PROJECT_SOURCE_DIR}/tests/coverage/write_counters_of_children.cpp>)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} GTest::gmock GTest::gtest_main)
  add_test(NAME ${KORV_BUILD_NAME}/unit/${name} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(${KORV_BUILD_NAME}/unit/${name} PROPERTIES
                       TIMEOUT 120 ENVIRONMENT "${KORV_TEST_ENVIRONMENT}")
endfunction()

function(korv_window_test file)
  get_filename_component(name ${file} NAME_WE)
  add_test(NAME ${KORV_BUILD_NAME}/window/${name}
           COMMAND ${KORV_PYTHON} -m pytest -q -p no:cacheprovider --durations=3
                   ${CMAKE_CURRENT_SOURCE_DIR}/${file})
  set_tests_properties(${KORV_BUILD_NAME}/window/${name} PROPERTIES
    TIMEOUT 600
    ENVIRONMENT "KORV_BUILD_DIR=${PROJECT_BINARY_DIR};PYTHONDONTWRITEBYTECODE=1;${KORV_TEST_ENVIRONMENT}")
endfunction()
