# korv_unit_test(SUBJECT_test SOURCES... LIBS...): a GoogleTest program, one CTest test.
# korv_pytest(GROUP FILE [ENVIRONMENT...] [PROPERTIES...]): a pytest file, one CTest test; none in a
# build without the device, which does with the compiler alone.
#
# A test is named BUILD/GROUP/SUBJECT. The build's name comes first, so that one CTest run can cover
# several build trees.
find_package(GTest REQUIRED)
if(KORV_DEVICE)
  find_program(KORV_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)  # has Debian's modules
endif()
get_filename_component(KORV_BUILD_NAME ${PROJECT_BINARY_DIR} NAME)

set(KORV_TEST_ENVIRONMENT
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
    "UBSAN_OPTIONS=print_stacktrace=1")

# Sets `test` to the name of the CTest test of SUBJECT_test or SUBJECT_test.py.
function(korv_test_name test group file)
  string(REGEX REPLACE "_test(\\.py)?$" "" subject ${file})
  set(${test} ${KORV_BUILD_NAME}/${group}/${subject} PARENT_SCOPE)
endfunction()

function(korv_unit_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
  korv_test_name(test unit ${name})
  add_executable(${name} ${arg_SOURCES}
    $<$<BOOL:${KORV_COVERAGE}>:${PROJECT_SOURCE_DIR}/tests/coverage/write_counters_of_children.cpp>)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} GTest::gmock GTest::gtest_main)
  add_test(NAME ${test} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(${test} PROPERTIES TIMEOUT 120 ENVIRONMENT "${KORV_TEST_ENVIRONMENT}")
endfunction()

function(korv_pytest group file)
  if(NOT KORV_DEVICE)
    return()
  endif()
  cmake_parse_arguments(arg "" "" "ENVIRONMENT;PROPERTIES" ${ARGN})
  korv_test_name(test ${group} ${file})
  add_test(NAME ${test}
           COMMAND ${KORV_PYTHON} -m pytest -q -p no:cacheprovider --durations=3
                   ${CMAKE_CURRENT_SOURCE_DIR}/${file})
  set_tests_properties(${test} PROPERTIES
    TIMEOUT 600 ${arg_PROPERTIES}
    ENVIRONMENT "KORV_BUILD_DIR=${PROJECT_BINARY_DIR};PYTHONDONTWRITEBYTECODE=1;${KORV_TEST_ENVIRONMENT};${arg_ENVIRONMENT}")
endfunction()
