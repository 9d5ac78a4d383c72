# cmake -D SOURCE=chinese.ts -D TARGET=expanded.ts -P sharetexts.cmake
#
# Each form looks its texts up in the context of its own class. Those that several forms have stand once in the
# source, in a shared context; here they go into the contexts of the forms instead, but for a text that a form
# has of its own.
cmake_minimum_required(VERSION 3.25)

# A shared context and the contexts that it goes into.
set(rows
  "CertificateField       ServiceIEC61850EditDialog standardOPCUAEditDialog"
  "DefinitionForm         BoxEditDialog BoxInputDialog PLCEditDialog ServiceIEC61850EditDialog
                          standardModbusEditDialog
                          standardDLT645EditDialog standardCustomPollEditDialog standardDIOEditDialog
                          standardOPCUAEditDialog ServerEditDialog ServerAliMQTTEditDialog
                          ServerOneNetMQTTEditDialog ServerHuaWeiMQTTEditDialog ServerOPCUAEditDialog
                          ServerModbusTCPEditDialog ServerHJ212EditDialog ServerSL651EditDialog"
  "ParameterTable         PLCEditDialog standardModbusEditDialog standardCustomPollEditDialog
                          standardDIOEditDialog standardOPCUAEditDialog"
  "PointForm              ServerModbusTCPEditDialog ServerHJ212EditDialog ServerSL651EditDialog"
  "ServerFields           ServerInputDialog ServerEditDialog ServerAliMQTTEditDialog
                          ServerOneNetMQTTEditDialog ServerHuaWeiMQTTEditDialog ServerOPCUAEditDialog"
  "StandardAuthentication CMainWindow standardOPCUAEditDialog"
  "StandardFields         standardModbusEditDialog standardDLT645EditDialog standardCustomPollEditDialog
                          standardDIOEditDialog standardOPCUAEditDialog"
  "StandardTableForm      standardCustomPollEditDialog standardDIOEditDialog standardOPCUAEditDialog")

# Splits the catalogue around the messages of a context, which begin behind its name.
macro(split_at name)
  string(FIND "${catalogue}" "<name>${name}</name>\n" start)
  if(start EQUAL -1)
    message(FATAL_ERROR "${SOURCE} has no context ${name}")
  endif()
  string(LENGTH "<name>${name}</name>\n" length)
  math(EXPR start "${start} + ${length}")
  string(SUBSTRING "${catalogue}" 0 ${start} before)
  string(SUBSTRING "${catalogue}" ${start} -1 messages)
  string(FIND "${messages}" "</context>" end)
  string(SUBSTRING "${messages}" ${end} -1 behind)
  string(SUBSTRING "${messages}" 0 ${end} messages)
endmacro()

# Appends to `messages` those of `shared` whose sources it does not have.
macro(append_shared)
  set(own "${messages}")
  set(rest "${shared}")
  while(rest MATCHES "</message>\n")
    string(FIND "${rest}" "</message>\n" end)
    math(EXPR end "${end} + 11") # behind the line
    string(SUBSTRING "${rest}" 0 ${end} message)
    string(SUBSTRING "${rest}" ${end} -1 rest)
    string(REGEX MATCH "<source>.*</source>" source "${message}")
    string(FIND "${own}" "${source}" found)
    if(found EQUAL -1)
      string(APPEND messages "${message}")
    endif()
  endwhile()
endmacro()

file(READ "${SOURCE}" catalogue)
foreach(row IN LISTS rows)
  string(REGEX MATCHALL "[A-Za-z0-9]+" forms "${row}")
  list(POP_FRONT forms name)
  split_at(${name})
  set(shared "${messages}")
  set(catalogue "${before}${behind}") # an empty context, which lrelease drops
  foreach(form IN LISTS forms)
    split_at(${form})
    append_shared()
    set(catalogue "${before}${messages}${behind}")
  endforeach()
endforeach()
file(WRITE "${TARGET}" "${catalogue}")
