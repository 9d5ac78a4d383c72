# Gives the target marlingate_docking: Qt Advanced Docking System, whichever of its packages is here.
# 4.x installs as qtadvanceddocking-qt5 or qt5advanceddocking, 3.8 (Debian 12) as qtadvanceddocking.
foreach(package qtadvanceddocking-qt5 qt5advanceddocking qtadvanceddocking)
  find_package(${package} QUIET CONFIG)
  if(${package}_FOUND)
    set(docking_package ${package})
    break()
  endif()
endforeach()

foreach(candidate ads::qtadvanceddocking-qt5 ads::qt5advanceddocking ads::qtadvanceddocking)
  if(TARGET ${candidate})
    set(docking_target ${candidate})
    break()
  endif()
endforeach()

if(NOT docking_target)
  message(FATAL_ERROR
    "Qt Advanced Docking System for Qt 5 was not found. On Debian install "
    "libqt-advanced-docking-system-dev, or set CMAKE_PREFIX_PATH to a 4.x installation.")
endif()
message(STATUS "Docking library: ${docking_target} (${${docking_package}_VERSION})")

# 3.8 exports /usr/include, 4.x its own folder: both are searched for the headers themselves.
get_target_property(docking_includes ${docking_target} INTERFACE_INCLUDE_DIRECTORIES)
find_path(DOCKING_INCLUDE_DIR DockManager.h
  HINTS ${docking_includes}
  PATH_SUFFIXES qtadvanceddocking qtadvanceddocking-qt5 qt5advanceddocking
  REQUIRED)

add_library(marlingate_docking INTERFACE)
target_link_libraries(marlingate_docking INTERFACE ${docking_target})
target_include_directories(marlingate_docking SYSTEM INTERFACE ${DOCKING_INCLUDE_DIR})
