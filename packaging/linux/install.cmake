# The usual places of a Unix desktop. The program itself is no command: it keeps its layout in the working
# directory and its log beside itself, so the command is a launcher that enters a folder of the user's.
set(program_dir ${CMAKE_INSTALL_LIBEXECDIR}/${package_name})
file(RELATIVE_PATH PROGRAM_FROM_BIN
     /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${program_dir}/${package_name})
configure_file(${CMAKE_CURRENT_LIST_DIR}/launcher.in ${CMAKE_CURRENT_BINARY_DIR}/${package_name} @ONLY
               USE_SOURCE_PERMISSIONS)

install(TARGETS marlingate RUNTIME DESTINATION ${program_dir})
install(TARGETS boxsim RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(PROGRAMS ${CMAKE_CURRENT_BINARY_DIR}/${package_name} DESTINATION ${CMAKE_INSTALL_BINDIR})

# The place beside the program is not the user's to write. This link leads the log into the working directory
# of whoever runs it.
file(CREATE_LINK /proc/self/cwd/MARLINLOG.log ${CMAKE_CURRENT_BINARY_DIR}/MARLINLOG.log SYMBOLIC)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/MARLINLOG.log DESTINATION ${program_dir})

install(FILES ${CMAKE_CURRENT_LIST_DIR}/marlin-gate-70.desktop
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/org.marlingate.marlingate70.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo)

set(icons ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor)
foreach(size 16 22 24 32 48 64 128 256 512)
  install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/icons/${size}.png
          DESTINATION ${icons}/${size}x${size}/apps RENAME ${package_name}.png)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/src/resources/images/logo-1.svg
        DESTINATION ${icons}/scalable/apps RENAME ${package_name}.svg)

set(manual_pages ${CMAKE_CURRENT_SOURCE_DIR}/man/marlin-gate-70.1)
find_program(HELP2MAN help2man)
if(HELP2MAN AND NOT CMAKE_CROSSCOMPILING)
  set(boxsim_page ${CMAKE_CURRENT_BINARY_DIR}/boxsim.1)
  add_custom_command(OUTPUT ${boxsim_page}
    COMMAND ${HELP2MAN} --no-info --include=${CMAKE_CURRENT_SOURCE_DIR}/man/boxsim.h2m --output=${boxsim_page}
            $<TARGET_FILE:boxsim>
    DEPENDS boxsim ${CMAKE_CURRENT_SOURCE_DIR}/man/boxsim.h2m
    VERBATIM)
  add_custom_target(manual_pages ALL DEPENDS ${boxsim_page})
  list(APPEND manual_pages ${boxsim_page})
else()
  message(STATUS "No help2man to make boxsim's manual page: it is left out")
endif()
install(FILES ${manual_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${documents}
        FILES_MATCHING PATTERN "*.md" PATTERN "*.png")

include(${CMAKE_CURRENT_LIST_DIR}/deb.cmake)
