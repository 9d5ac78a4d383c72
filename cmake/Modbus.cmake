# Gives the target marlingate_modbus: libmodbus 3.1, as distributions install it. On Debian: libmodbus-dev.
find_path(MODBUS_INCLUDE_DIR modbus.h PATH_SUFFIXES modbus REQUIRED)
find_library(MODBUS_LIBRARY modbus REQUIRED)
message(STATUS "libmodbus: ${MODBUS_LIBRARY}")

add_library(marlingate_modbus INTERFACE)
target_link_libraries(marlingate_modbus INTERFACE ${MODBUS_LIBRARY})
target_include_directories(marlingate_modbus SYSTEM INTERFACE ${MODBUS_INCLUDE_DIR})
