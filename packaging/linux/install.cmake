# The usual places of a Unix desktop. The program itself is no command: it keeps its layout in the working
# directory and its log beside itself, so the command is a launcher that enters a folder of the user's.
set(program_dir ${CMAKE_INSTALL_LIBEXECDIR}/${package_name})
file(RELATIVE_PATH PROGRAM_FROM_BIN
     /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${program_dir}/${package_name})
configure_file(${CMAKE_CURRENT_LIST_DIR}/launcher.in ${CMAKE_CURRENT_BINARY_DIR}/${package_name} @ONLY
               USE_SOURCE_PERMISSIONS)

install(TARGETS marlingate RUNTIME DESTINATION ${program_dir})
install(TARGETS boxsim boxctl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
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
  set(help_option_of_boxsim --help)
  set(help_option_of_boxctl --help-all)
  foreach(tool boxsim boxctl)
    set(page ${CMAKE_CURRENT_BINARY_DIR}/${tool}.1)
    set(additions ${CMAKE_CURRENT_SOURCE_DIR}/man/${tool}.h2m)
    add_custom_command(OUTPUT ${page}
      COMMAND ${HELP2MAN} --no-info --help-option=${help_option_of_${tool}} --include=${additions}
              --output=${page} $<TARGET_FILE:${tool}>
      DEPENDS ${tool} ${additions}
      VERBATIM)
    list(APPEND made_pages ${page})
  endforeach()
  add_custom_target(manual_pages ALL DEPENDS ${made_pages})
  list(APPEND manual_pages ${made_pages})
else()
  message(STATUS "No help2man to make the manual pages of boxsim and boxctl: they are left out")
endif()
install(FILES ${CMAKE_CURRENT_LIST_DIR}/boxctl.bash
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions RENAME boxctl)
install(FILES ${manual_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${documents}
        FILES_MATCHING PATTERN "*.md" PATTERN "*.png")
install(PROGRAMS ${PROJECT_SOURCE_DIR}/docs/commission.sh DESTINATION ${documents}/examples)

include(${CMAKE_CURRENT_LIST_DIR}/deb.cmake)
