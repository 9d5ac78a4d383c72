# Installs the build into a fresh prefix and compares what lies there with what should.
cmake_minimum_required(VERSION 3.25)
set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

set(expected
  bin/boxctl
  bin/boxsim
  bin/marlin-gate-70
  libexec/marlin-gate-70/MARLINLOG.log
  libexec/marlin-gate-70/marlin-gate-70
  share/bash-completion/completions/boxctl
  share/applications/marlin-gate-70.desktop
  share/doc/marlin-gate-70/changelog
  share/doc/marlin-gate-70/copyright
  share/doc/marlin-gate-70/examples/commission.sh
  share/icons/hicolor/scalable/apps/marlin-gate-70.svg
  share/man/man1/marlin-gate-70.1
  share/metainfo/org.marlingate.marlingate70.metainfo.xml)
foreach(size 16 22 24 32 48 64 128 256 512)
  list(APPEND expected share/icons/hicolor/${size}x${size}/apps/marlin-gate-70.png)
endforeach()

if(HELP2MAN)
  list(APPEND expected share/man/man1/boxctl.1 share/man/man1/boxsim.1)
endif()

# The manual's pages and pictures may come and go; what matters is that they are there and nothing but they.
file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE ${prefix} ${prefix}/*)
set(found ${files})
list(FILTER files INCLUDE REGEX "^share/doc/marlin-gate-70/(pictures/((en|zh)/)?)?[a-z0-9-]+(\\.zh)?\\.(md|png)$")
list(REMOVE_ITEM found ${files})
# A link to what is not there yet is no file to GLOB.
if(IS_SYMLINK ${prefix}/libexec/marlin-gate-70/MARLINLOG.log)
  list(APPEND found libexec/marlin-gate-70/MARLINLOG.log)
  list(REMOVE_DUPLICATES found)
endif()

list(SORT expected)
list(SORT found)
if(NOT found STREQUAL expected)
  message(FATAL_ERROR "Installed:\n${found}\nExpected:\n${expected}")
endif()
foreach(page box-protocol.md project-document.md)
  if(NOT share/doc/marlin-gate-70/${page} IN_LIST files)
    message(FATAL_ERROR "${page} is missing.")
  endif()
endforeach()

# has_every_word(<tool> <option>): the manual page has an entry for each word of the help, whose columns help2man
# tells apart.
function(has_every_word tool option)
  execute_process(COMMAND ${prefix}/bin/${tool} ${option} OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "\n  or: [^\n]*|\nExamples:.*" "" help "${help}")
  string(REGEX MATCHALL "\n  (-h, )?[a-z-]+" words "${help}")
  file(READ ${prefix}/share/man/man1/${tool}.1 page)
  string(REGEX REPLACE "\\\\f[A-Z]|\\\\" "" page "${page}") # fonts and escapes
  foreach(word ${words})
    string(STRIP "${word}" word)
    string(FIND "${page}" "\n.TP\n${word}" at)
    if(at EQUAL -1)
      message(FATAL_ERROR "The manual page of ${tool} has no entry \"${word}\".")
    endif()
  endforeach()
endfunction()

# Rooms that are shared libraries, as in the builds of developers, are not installed.
file(GLOB rooms ${BUILD_DIR}/src/*)
list(JOIN rooms ":" rooms)
set(ENV{LD_LIBRARY_PATH} "${rooms}")
foreach(tool boxctl boxsim)
  execute_process(COMMAND ${prefix}/bin/${tool} --version COMMAND_ERROR_IS_FATAL ANY)
endforeach()
if(HELP2MAN)
  has_every_word(boxctl --help-all)
  has_every_word(boxsim --help)
  # Each line of the usage is part of the synopsis.
  file(READ ${prefix}/share/man/man1/boxctl.1 page)
  string(FIND "${page}" ".SH DESCRIPTION\nWorks with Boxes" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "The description of the manual page of boxctl does not begin with its first sentence.")
  endif()
endif()
