# The Debian package. What it links is found by dpkg-shlibdeps; what is only loaded at run time is named here.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/finish-deb.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${MARLINGATE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The plugin that draws the icons, and the driver of recordings in files.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt5svg5, libqt5sql5-sqlite")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-noto-cjk")   # the program speaks Chinese
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libqt5sql5-psql, qtwayland5") # recordings in PostgreSQL
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Marlin Gate 70 is a desktop tool for an industrial edge gateway, a Box. It
describes in a project what a Box acquires from meters and Modbus devices and
what it offers over IEC 61850, saves the project as a JSON document, pushes it
to Boxes, shows the values that they report, over time, too, records them, and
reads and writes their network settings.
.
With it come boxctl, which works with many Boxes at once from a shell, and
boxsim, a Box in software, for trying the program without a gateway and as a
reference for whoever writes the firmware of one.")

install(FILES ${CMAKE_CURRENT_LIST_DIR}/copyright ${CMAKE_CURRENT_LIST_DIR}/changelog
        DESTINATION ${documents})
