# The program as a bundle with its Qt inside, in a disk image. A bundle is started in the root folder, where
# nobody may write, so a launcher enters a folder of the user's first; macdeployqt wants to see the program.
set(bundle marlin-gate-70.app)
set_target_properties(marlingate PROPERTIES
  MACOSX_BUNDLE ON
  MACOSX_BUNDLE_BUNDLE_NAME "Marlin Gate 70"
  MACOSX_BUNDLE_GUI_IDENTIFIER org.marlingate.marlingate70
  MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION})
install(TARGETS marlingate BUNDLE DESTINATION .)
install(PROGRAMS ${CMAKE_CURRENT_LIST_DIR}/launcher DESTINATION ${bundle}/Contents/MacOS)
install(TARGETS boxsim boxctl RUNTIME DESTINATION ${bundle}/Contents/MacOS)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION . FILES_MATCHING PATTERN "*.md" PATTERN "*.png")

get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
get_filename_component(qt_bin ${qmake} DIRECTORY)
find_program(MACDEPLOYQT macdeployqt HINTS ${qt_bin} REQUIRED)
install(CODE "
  set(bundle \"\${CMAKE_INSTALL_PREFIX}/${bundle}\")
  execute_process(COMMAND \"${MACDEPLOYQT}\" \${bundle} -executable=\${bundle}/Contents/MacOS/boxsim
                  -executable=\${bundle}/Contents/MacOS/boxctl
                  COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND plutil -replace CFBundleExecutable -string launcher \${bundle}/Contents/Info.plist
                  COMMAND_ERROR_IS_FATAL ANY)")

set(CPACK_GENERATOR DragNDrop)
