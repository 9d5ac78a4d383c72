# marlingate_test_icons(<test>): gives a core test stand-ins for the icons of the project tree, each different,
# under the resource paths of the program's own. The program's resources belong to a library with widgets.
function(marlingate_test_icons name)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${name}_icons)
  set(entries "")
  foreach(icon project_manage standard Service Box Data DLT645 Modbus IEC61850 box-file data-file dio CustomPoll OpcUa)
    file(CONFIGURE OUTPUT ${folder}/${icon}.svg CONTENT
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"8\"><g id=\"${icon}\"/></svg>\n")
    string(APPEND entries "<file alias=\"${icon}.svg\">${folder}/${icon}.svg</file>\n")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/${name}_icons.qrc CONTENT
    "<RCC><qresource prefix=\"/adsdemo/images\">\n${entries}</qresource></RCC>\n")
  target_sources(${name} PRIVATE ${folder}/${name}_icons.qrc)
endfunction()
