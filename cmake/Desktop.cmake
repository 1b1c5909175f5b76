# The entry and the icons of the desktop's menus. Where the program stands is known at the installation.
install(CODE "
  set(VM_EXEC \"\${CMAKE_INSTALL_PREFIX}/velmarkion\")
  if(VM_EXEC MATCHES \" \")
    set(VM_EXEC \"\\\"\${VM_EXEC}\\\"\")
  endif()
  configure_file(${CMAKE_SOURCE_DIR}/resources/desktop/velmarkion.desktop.in
    \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/share/applications/velmarkion.desktop\" @ONLY)")
foreach(size 16 32 48 64 128 256)
  install(FILES ${CMAKE_SOURCE_DIR}/resources/images/velmarkion-${size}.png
    DESTINATION share/icons/hicolor/${size}x${size}/apps RENAME velmarkion.png)
endforeach()
