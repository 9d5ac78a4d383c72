# Gives the target marlingate_qwt: the plots of Qwt 6 for Qt 5, as distributions install it. On Debian:
# libqwt-qt5-dev.
find_path(QWT_INCLUDE_DIR qwt_plot.h PATH_SUFFIXES qwt qwt-qt5 qt5/qwt qwt6 REQUIRED)
find_library(QWT_LIBRARY NAMES qwt-qt5 qwt REQUIRED)
message(STATUS "Qwt: ${QWT_LIBRARY}")

add_library(marlingate_qwt INTERFACE)
target_link_libraries(marlingate_qwt INTERFACE ${QWT_LIBRARY} Qt5::Widgets Qt5::Svg)
target_include_directories(marlingate_qwt SYSTEM INTERFACE ${QWT_INCLUDE_DIR})
