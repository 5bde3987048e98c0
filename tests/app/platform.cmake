# What start-up does before there is a window.
korv_unit_test(platform_test SOURCES platform_test.cpp LIBS platform test_support)

# The same tests on other product data: what they say holds for any.
set(other_data ${CMAKE_CURRENT_BINARY_DIR}/other_data)
korv_product_data_header(${CMAKE_CURRENT_SOURCE_DIR}/other_product_data.txt
                         ${other_data}/app/product_data.h)
korv_unit_test(platform_other_data_test
               SOURCES platform_test.cpp ${PROJECT_SOURCE_DIR}/app/platform.cpp LIBS text test_support)
target_include_directories(platform_other_data_test PRIVATE ${other_data})
foreach(catching platform_test platform_other_data_test)
  target_compile_options(${catching} PRIVATE -fexceptions)
endforeach()

korv_pytest(unit product_data_test.py ENVIRONMENT KORV_SOURCE_DIR=${PROJECT_SOURCE_DIR})

korv_unit_test(single_instance_test
               SOURCES single_instance_test.cpp LIBS single_instance test_support)

add_executable(raise_window_driver raise_window_driver.cpp)
target_link_libraries(raise_window_driver PRIVATE raise_window PkgConfig::X11)
korv_pytest(unit raise_window_test.py
            ENVIRONMENT KORV_RAISE_DRIVER=$<TARGET_FILE:raise_window_driver>)
