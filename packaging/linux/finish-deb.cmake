# CPack runs this on the installed tree before it packs it, for what Debian asks of a package: compressed manual
# pages and changelogs, and no compiler's note in a program.
file(GLOB_RECURSE files LIST_DIRECTORIES false ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*)
foreach(file ${files})
  if(file MATCHES "/man/man1/|/changelog$")
    execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
  elseif(file MATCHES "/bin/box(ctl|sim)$|/libexec/.*/marlin-gate-70$")
    execute_process(COMMAND strip --remove-section=.comment ${file} COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
