# Runs one test program in an empty working directory of its own. So is its home: Qt's file dialogs keep there what was
# last chosen, and tools have their settings there. The settings that come with the environment are left out, too.
set(home ${WORK_DIR}.home)
file(REMOVE_RECURSE ${WORK_DIR} ${home})
file(MAKE_DIRECTORY ${WORK_DIR} ${home})
set(ENV{HOME} ${home})
set(ENV{SHELL} /bin/sh)
foreach(variable
    XDG_CACHE_HOME XDG_CONFIG_DIRS XDG_CONFIG_HOME XDG_CURRENT_DESKTOP XDG_DATA_HOME XDG_STATE_HOME LANGUAGE
    QT_LOGGING_RULES QT_MESSAGE_PATTERN QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE
    PGDATABASE PGHOST PGOPTIONS PGPASSFILE PGPASSWORD PGPORT PGSERVICE PGSSLMODE PGUSER)
  unset(ENV{${variable}})
endforeach()
execute_process(COMMAND ${PROGRAM} WORKING_DIRECTORY ${WORK_DIR} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with ${result}")
endif()
