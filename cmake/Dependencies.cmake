# Everything the program links. Imported targets are system includes, so that the toolkit's own
# headers do not have to pass our warnings.
find_package(PkgConfig REQUIRED)
pkg_check_modules(GLIB REQUIRED IMPORTED_TARGET glib-2.0)
pkg_check_modules(GTK2 REQUIRED IMPORTED_TARGET gtk+-2.0>=2.24)
pkg_check_modules(X11 REQUIRED IMPORTED_TARGET x11)

# Only QString, QLatin1String and QByteArray are used, and of them what means the same on 5 and 6.
set(KORV_QT_MAJOR "" CACHE STRING "Qt major version to use: 6, 5, or empty for the newest installed")
if(KORV_QT_MAJOR)
  find_package(Qt${KORV_QT_MAJOR} REQUIRED COMPONENTS Core)
  set(QT_VERSION_MAJOR ${KORV_QT_MAJOR})
else()
  find_package(QT NAMES Qt6 Qt5 REQUIRED COMPONENTS Core)
  find_package(Qt${QT_VERSION_MAJOR} REQUIRED COMPONENTS Core)
endif()
add_library(qt_core INTERFACE)
target_link_libraries(qt_core INTERFACE Qt${QT_VERSION_MAJOR}::Core)
# A const char * is Latin-1 on one Qt and UTF-8 on the next: the compiler refuses to guess.
target_compile_definitions(qt_core INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
                                             QT_NO_CAST_FROM_BYTEARRAY)

add_library(gtk2 INTERFACE)
target_link_libraries(gtk2 INTERFACE PkgConfig::GTK2)
target_compile_definitions(gtk2 INTERFACE GTK_DISABLE_SINGLE_INCLUDES GTK_DISABLE_DEPRECATED
                                          GSEAL_ENABLE)
