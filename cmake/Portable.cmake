# Puts the files of data/ beside the executables, in the build folder and in an installation.
# CopyData.cmake keeps every file that a user has changed.
add_custom_target(vm_data ALL
  COMMAND ${CMAKE_COMMAND} -DSOURCE=${CMAKE_SOURCE_DIR}/data -DTARGET=${CMAKE_BINARY_DIR}
          -P ${CMAKE_SOURCE_DIR}/cmake/CopyData.cmake
  COMMENT "Data files beside the executables"
  VERBATIM)
install(CODE "execute_process(COMMAND ${CMAKE_COMMAND} -DSOURCE=${CMAKE_SOURCE_DIR}/data
  \"-DTARGET=\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\" -P ${CMAKE_SOURCE_DIR}/cmake/CopyData.cmake
  COMMAND_ERROR_IS_FATAL ANY)")
