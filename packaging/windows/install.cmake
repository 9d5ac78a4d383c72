# The program with its Qt beside it, as a ZIP and as an installer. It installs for one user, into a folder of
# that user's: the layout and the log, which lie where the program does, can be written there.
install(TARGETS marlingate boxsim boxctl RUNTIME DESTINATION .)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION . FILES_MATCHING PATTERN "*.md" PATTERN "*.png")

get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
get_filename_component(qt_bin ${qmake} DIRECTORY)
find_program(WINDEPLOYQT windeployqt HINTS ${qt_bin} REQUIRED)
install(CODE "execute_process(
  COMMAND \"${WINDEPLOYQT}\" --release --no-translations --compiler-runtime marlin-gate-70.exe boxsim.exe boxctl.exe
  WORKING_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\" COMMAND_ERROR_IS_FATAL ANY)")
# windeployqt brings Qt's libraries, not the docking library and the plots.
install(FILES $<TARGET_FILE:${docking_target}> DESTINATION .)
get_filename_component(qwt_folder ${QWT_LIBRARY} DIRECTORY)
find_file(QWT_DLL NAMES qwt.dll qwt-qt5.dll HINTS ${qwt_folder} ${qwt_folder}/../bin REQUIRED)
install(FILES ${QWT_DLL} DESTINATION .)

set(CPACK_GENERATOR ZIP NSIS)
set(CPACK_PACKAGE_INSTALL_DIRECTORY "Marlin Gate 70")
set(CPACK_NSIS_INSTALL_ROOT "$LOCALAPPDATA\\Programs")
set(CPACK_NSIS_DEFINES "RequestExecutionLevel user")
set(CPACK_NSIS_EXECUTABLES_DIRECTORY .)
set(CPACK_PACKAGE_EXECUTABLES marlin-gate-70 "Marlin Gate 70")
