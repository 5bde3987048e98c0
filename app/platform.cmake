# What start-up does before there is a window: which platform this is, and whether the program
# already runs on it.
include(ProductData)
set(PRODUCT_DATA ${PROJECT_SOURCE_DIR}/app/product_data.txt CACHE FILEPATH
    "The product line's own identifiers, in the form that app/product_data.txt documents")
korv_product_data_header("${PRODUCT_DATA}" ${PROJECT_BINARY_DIR}/app/product_data.h)

add_library(platform STATIC platform.cpp)
target_include_directories(platform PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})
target_link_libraries(platform PRIVATE text)
target_compile_options(platform PRIVATE -fexceptions)  # it throws, also where coverage is counted

add_library(single_instance STATIC single_instance.cpp)
target_include_directories(single_instance PUBLIC ${PROJECT_SOURCE_DIR})

add_library(raise_window STATIC raise_window.cpp)
target_include_directories(raise_window PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(raise_window PRIVATE PkgConfig::X11)
